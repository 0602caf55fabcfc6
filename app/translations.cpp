#include "app/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

// Installs the translator from `file` in `folder` ("kalkora_en_US" finds
// kalkora_en_US.qm or kalkora_en.qm), parented to the application.
bool install(const QString& file, const QString& folder) {
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(file, folder) && QCoreApplication::installTranslator(translator)) return true;
    delete translator;
    return false;
}

}  // namespace

QString installTranslations(const QStringList& uiLanguages) {
    Q_INIT_RESOURCE(translations);
    for (const QString& name : uiLanguages) {
        const QLocale language(name);
        if (language.language() == QLocale::Russian) return QString();
        if (language.language() == QLocale::C) continue;
        const QString tag = language.name();  // "en_US"
        if (!install(QStringLiteral("kalkora_") + tag, QStringLiteral(":/translations"))) continue;
        install(QStringLiteral("qtbase_") + tag, QLibraryInfo::location(QLibraryInfo::TranslationsPath));
        return tag.section(QLatin1Char('_'), 0, 0);
    }
    return QString();
}
