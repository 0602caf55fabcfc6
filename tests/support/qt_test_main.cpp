// Entry point of the window test suites: one QApplication for the whole run, on the headless platform unless the
// caller chose another one.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    // Standard error is the window's run log, read back byte for byte: Qt's own warnings go to standard output
    // instead.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& message) {
        std::fprintf(stdout, "qt: %s\n", message.toLocal8Bit().constData());
    });
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
