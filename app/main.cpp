#include <QApplication>
#include <QLocale>

#include "app/translations.h"
#include "app/widget.h"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    // The desktop's languages, as the user set them (LANGUAGE=en kalkora, say).
    installTranslations(QLocale::system().uiLanguages());
    Widget window;
    window.show();
    return app.exec();
}
