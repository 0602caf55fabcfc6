#include <gtest/gtest.h>

#include <QAction>
#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>
#include <sys/mount.h>
#include <utility>
#include <unistd.h>

#include "app/run_log.h"
#include "app/run_log_writer.h"
#include "app/widget.h"
#include "modal_box_catcher.h"
#include "temp_work_dir.h"
#include "window_harness.h"

namespace {

TEST(RunLog, NameFromTimeText) {
    const struct { std::string time, name; } cases[] = {
        {"Mon Nov 16 18:55:06 2026\n", "log-Mon-Nov-16-18-55-06-2026.txt"},
        {"Mon Nov  6 08:05:09 2026\n", "log-Mon-Nov--6-08-05-09-2026.txt"},
        {"\n", "log-.txt"},
        {std::string(150, 'a') + "\n", "log-" + std::string(95, 'a')},  // its buffer holds 99
    };
    for (const auto& c : cases) EXPECT_EQ(runLogFileName(c.time.c_str()), c.name) << c.time;
}

// A start creates the log named after its start time, or truncates an old one of that name (two starts within a
// second), and makes it standard error.
TEST(RunLog, CreatedOrTruncatedAtStartAndTakesStandardError) {
    for (const std::string old : {"", "old run\n"}) {
        TempWorkDir dir;
        const time_t now = time(nullptr);
        std::set<std::string> names;  // every name the start may choose (the clock may tick)
        for (time_t t = now; t <= now + 5; ++t) names.insert(runLogFileName(ctime(&t)));
        for (const std::string& name : names) if (!old.empty()) std::ofstream(name) << old;  // else none exists
        const int savedStderr = dup(2);
        {
            ModalBoxCatcher boxes;
            Widget window;
            std::cerr << "first line" << std::endl;
            fprintf(stderr, "%7.3lf \n", 1.5);
            std::fflush(stderr);
            EXPECT_TRUE(boxes.take().empty() && time(nullptr) <= now + 5);
        }
        dup2(savedStderr, 2);
        close(savedStderr);
        std::multiset<std::string> contents;  // one log written, the other names as they were
        for (const std::string& name : names) {
            std::ifstream log(name);
            contents.insert(std::string(std::istreambuf_iterator<char>(log), {}));
        }
        EXPECT_EQ(contents.count("first line\n  1.500 \n"), 1u) << old;
        EXPECT_EQ(contents.count(old), names.size() - 1) << old;
    }
}

// The child starts in a working directory that no longer exists, so the log cannot be created; it reports its box on
// a copy of the lost standard error.
TEST(RunLogDeathTest, UncreatableLogShowsErrorBoxAndExitsWithOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    TempWorkDir gone;
    ASSERT_EQ(rmdir(gone.path().c_str()), 0);
    const auto start = [] {
        const int out = dup(2);
        ModalBoxCatcher catcher;
        catcher.onBox = [out](const CaughtBox& box) {
            const std::string line = "[" + box.title.toStdString() + " # " + box.text.toStdString() +
                                     (box.buttons == QMessageBox::Ok ? " # ok" : "") + "]\n";
            if (write(out, line.data(), line.size()) < 0) _exit(3);
        };
        Widget window;
    };
    EXPECT_EXIT(start(), ::testing::ExitedWithCode(1),
                ::testing::ContainsRegex("\\[Ошибка # Не удалось открыть файл log-[A-Z][a-z][a-z]-"
                                         "[A-Z][a-z][a-z]-[-0-9][0-9]-[0-9][0-9]-[0-9][0-9]-[0-9][0-9]-"
                                         "[0-9]+\\.txt на запись\\. # ok\\]"));
}

// The writer hands every piece to its descriptor at once and keeps the first failure's errno without failing the
// stream; restart() forgets it and clears the error state of std::cerr and stdio's stderr.
TEST(RunLogWriter, WritesAtOnceAndKeepsTheFirstFailure) {
    TempWorkDir dir;
    std::ofstream("read-only") << "";
    const struct { const char* path; int flags; int error; } cases[] = {
        {"log", O_WRONLY | O_CREAT | O_TRUNC, 0},
        {"/dev/full", O_WRONLY, ENOSPC},
        {"read-only", O_RDONLY, EBADF},
    };
    for (const auto& c : cases) {
        const int fd = open(c.path, c.flags, 0644);
        ASSERT_GE(fd, 0) << c.path;
        RunLogWriter writer(fd);
        std::ostream log(&writer);
        log << "Part: " << 1 << std::endl;
        EXPECT_EQ(lseek(fd, 0, SEEK_CUR), c.error ? 0 : 8) << c.path;  // on disk before any flush of its own
        log.write("Total: 0\n\n", 10);
        EXPECT_TRUE(log.good()) << c.path;
        EXPECT_EQ(writer.error(), c.error) << c.path;
        EXPECT_EQ(writer.complete(), c.error == 0) << c.path;
        EXPECT_EQ(writer.reason(), c.error ? std::strerror(c.error) : "") << c.path;
        std::cerr.setstate(std::ios_base::badbit);
        (void)std::fgetc(stderr);  // reading a write-only stream sets its error indicator
        writer.restart();
        EXPECT_TRUE(writer.complete() && std::cerr.good() && !std::ferror(stderr)) << c.path;
        close(fd);
    }
    std::ifstream written("log");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), "Part: 1\nTotal: 0\n\n");
}

// A calculation whose log cannot be written ends as usual (results shown, its own box, its error line attempted),
// then one more box names the log file and the system's reason; the next calculation is logged in full after the
// lines that made it. The sink: /dev/full behind descriptor 2, or a 256 KiB tmpfs over the working directory (root
// only) holding 128 KiB of ballast, deleted after the first calculation.
TEST(RunLog, UnwrittenLinesAreReportedAfterTheCalculationAndTheNextOneIsLogged) {
    const struct { bool tmpfs; const char* function; const char* box; } cases[] = {
        {false, "sin(2*pi*x)*exp(-x^2/100)", "Расчет завершен"},
        {true, "sin(2*pi*x)*exp(-x^2/100)", "Расчет завершен"},
        {true, "1/(x-99.9901)", "Значение выражения для заданных аргументов не определено либо слишком велико"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.tmpfs ? "tmpfs " : "/dev/full ") + c.function);
        std::string mounted, refused;
        WindowHarness h([&](const std::string& dir) {
            if (!c.tmpfs) return;
            if (mount("tmpfs", dir.c_str(), "tmpfs", 0, "size=256k") != 0) {
                refused = std::strerror(errno);
                return;
            }
            mounted = dir;
            if (chdir(dir.c_str()) == 0) std::ofstream("ballast") << std::string(128 * 1024, 'b');
        });
        // Detached even while the log is open; the file system goes when the window's log is closed.
        const struct Unmount {
            const std::string& dir;
            ~Unmount() { if (!dir.empty()) umount2(dir.c_str(), MNT_DETACH); }
        } unmount{mounted};
        if (c.tmpfs && mounted.empty()) GTEST_SKIP() << "mounting a tmpfs needs root: " << refused;
        h.click(kTaskButtons[4]);
        h.click("checkSimpsonMethod");
        h.typeText("exprFunc", u(c.function));
        for (const auto& [name, value] : {std::pair{"x1", -99.9999}, {"x2", 99.9999}, {"h1", 0.01}, {"h2", 0.01}})
            h.typeNumber(name, value);
        const int log = dup(2), full = open("/dev/full", O_WRONLY | O_CLOEXEC);
        if (!c.tmpfs) dup2(full, 2);
        h.click("calcButton");
        dup2(log, 2);
        close(log);
        close(full);

        const std::vector<CaughtBox> boxes = h.boxes().take();
        ASSERT_EQ(boxes.size(), 2u);
        EXPECT_EQ(boxes[0].text, u(c.box));
        EXPECT_EQ(boxes[1].title, u("Ошибка"));
        EXPECT_EQ(boxes[1].text.toStdString(), "Не удалось полностью записать журнал расчета в файл " + h.logName() +
                                                   ": No space left on device");
        EXPECT_TRUE(boxes[1].icon == QMessageBox::Information && boxes[1].buttons == QMessageBox::Ok &&
                    !boxes[1].hasParent);
        EXPECT_EQ(h.field("eps1"), std::string(c.box) == "Расчет завершен" ? "nan" : "");  // h1 = h2
        const std::string lost = h.log();
        const std::string begin = "Integration task begin.\n\nIntegration with Simpson method...\nx1 = -99.9999   ";
        EXPECT_EQ(lost.compare(0, begin.size(), begin) == 0, c.tmpfs) << lost.substr(0, 80);
        EXPECT_LE(lost.size(), 128u * 1024);
        // The report does not present the cut trace as whole.
        QTemporaryDir elsewhere;
        const QString page = elsewhere.filePath(u("report.html"));
        saveThroughDialog([&] { h.child<QWidget>("plot")->findChild<QAction*>(u("actionSaveReport"))->trigger(); },
                          page);
        QFile report(page);
        ASSERT_TRUE(report.open(QIODevice::ReadOnly));
        EXPECT_TRUE(QString::fromUtf8(report.readAll())
                        .contains(u("Журнал расчёта записан не полностью (No space left on device)")));

        if (c.tmpfs) {
            EXPECT_EQ(std::remove("ballast"), 0);
        }
        h.typeText("exprFunc", u("x"));
        for (const auto& [name, value] : {std::pair{"x1", 0.0}, {"x2", 1.0}, {"h1", 1.0}, {"h2", 1.0}})
            h.typeNumber(name, value);
        EXPECT_EQ(h.calculate().text, u("Расчет завершен"));
        const std::string run = "Integration with Simpson method...\nx1 = 0   x2 = 1   h = 1\n"
                                "Part: 1   x_left = 0   x_right = 1   Result: 0.5\nTotal: 0.5\n\n";
        EXPECT_EQ(h.log().substr(lost.size()),
                  "Integration task begin.\n\n" + run + run + "Integration task end.\n\n");
    }
}

}  // namespace
