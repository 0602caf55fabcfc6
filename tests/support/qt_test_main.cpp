// Entry point of the window test suites: one QApplication for the whole run, on the headless platform unless the
// caller chose another one.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>
#include <cstdio>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Standard error is the window's run log, read back byte for byte: Qt's own warnings go to standard output
    // instead.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
        std::fprintf(stdout, "qt: %s\n", message.toLocal8Bit().constData());
    });
    // The home folder (where save dialogs start) and Qt's settings (the file dialogs' history) are folders of this
    // run, not the user's: a test never leaves a file there, nor depends on what an earlier run left.
    QTemporaryDir home;
    qputenv("HOME", home.path().toLocal8Bit());
    qputenv("XDG_CONFIG_HOME", (home.path() + "/.config").toLocal8Bit());
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
