// Entry point of the window test suites: the widgets need a QApplication,
// created once for the whole run on the headless platform unless the caller
// chose another one.
#include <gtest/gtest.h>

#include <QApplication>
#include <cstdio>

namespace {

// The window makes standard error its run log, and the tests read that log
// back byte for byte: Qt's own warnings (the headless platform has a few)
// go to standard output instead.
void toStandardOutput(QtMsgType, const QMessageLogContext&, const QString& message) {
    std::fprintf(stdout, "qt: %s\n", message.toLocal8Bit().constData());
}

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(toStandardOutput);
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
