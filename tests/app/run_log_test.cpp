#include <gtest/gtest.h>
#include <gmock/gmock.h>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <set>
#include <string>
#include <unistd.h>

#include <QMessageBox>

#include "app/run_log.h"
#include "app/widget.h"
#include "modal_box_catcher.h"
#include "temp_work_dir.h"
#include "window_harness.h"

namespace {

TEST(RunLogName, FromTimeText) {
    const struct {
        const char* time;
        const char* name;
    } cases[] = {
        {"Mon Nov 16 18:55:06 2026\n", "log-Mon-Nov-16-18-55-06-2026.txt"},
        {"Mon Nov  6 08:05:09 2026\n", "log-Mon-Nov--6-08-05-09-2026.txt"},
        {"Thu Jan  1 00:00:00 1970\n", "log-Thu-Jan--1-00-00-00-1970.txt"},
        {"Sat Feb 29 23:59:59 2028\n", "log-Sat-Feb-29-23-59-59-2028.txt"},
        {"\n", "log-.txt"},
    };
    for (const auto& c : cases) EXPECT_EQ(runLogFileName(c.time), c.name) << c.time;
}

TEST(RunLogName, StaysWithinItsHundredByteBuffer) {
    const std::string longText(150, 'a');
    const std::string name = runLogFileName((longText + "\n").c_str());
    EXPECT_EQ(name.size(), 99u);
    EXPECT_EQ(name, "log-" + std::string(95, 'a'));
}

// Every name the window may have chosen while it was being built.
std::set<std::string> namesBetween(time_t from, time_t to) {
    std::set<std::string> names;
    for (time_t t = from; t <= to; ++t) names.insert(runLogFileName(ctime(&t)));
    return names;
}

TEST(RunLogFile, IsCreatedAtStartAndTakesStandardError) {
    const time_t before = time(nullptr);
    WindowHarness harness;
    const time_t after = time(nullptr);

    EXPECT_EQ(namesBetween(before, after).count(harness.logName()), 1u) << harness.logName();
    EXPECT_EQ(harness.log(), "");
    std::cerr << "first line" << std::endl;
    fprintf(stderr, "%7.3lf \n", 1.5);
    EXPECT_EQ(harness.log(), "first line\n  1.500 \n");
}

TEST(RunLogFile, AStartInTheSameSecondTruncatesTheOldLog) {
    TempWorkDir dir;
    const time_t now = time(nullptr);
    const std::set<std::string> names = namesBetween(now, now + 5);
    for (const std::string& name : names) std::ofstream(name) << "old run\n";

    const int savedStderr = dup(2);
    {
        ModalBoxCatcher boxes;
        Widget window;
        std::fflush(stderr);
        ASSERT_LE(time(nullptr), now + 5);
        // The start's own second is not known exactly (the clock may tick
        // while the window is built): exactly one old log must be truncated.
        int truncated = 0;
        for (const std::string& name : names) {
            std::ifstream log(name);
            const std::string content((std::istreambuf_iterator<char>(log)),
                                      std::istreambuf_iterator<char>());
            if (content.empty()) ++truncated;
            else EXPECT_EQ(content, "old run\n") << name;
        }
        EXPECT_EQ(truncated, 1);
        EXPECT_TRUE(boxes.take().empty());
    }
    dup2(savedStderr, 2);
    close(savedStderr);
}

// The child builds the window in a working directory that no longer exists,
// so the log file cannot be created; it reports the box it was shown on its
// own copy of standard error, which the window has just lost.
TEST(RunLogFileDeathTest, UncreatableLogShowsErrorBoxAndExitsWithOne) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    char previous[4096];
    ASSERT_NE(getcwd(previous, sizeof previous), nullptr);
    char gone[] = "/tmp/kalkora-gone-XXXXXX";
    ASSERT_NE(mkdtemp(gone), nullptr);
    ASSERT_EQ(chdir(gone), 0);
    ASSERT_EQ(rmdir(gone), 0);

    const auto report = [] {
        const int out = dup(2);
        ModalBoxCatcher catcher;
        catcher.onBox = [out](const CaughtBox& box) {
            const std::string line = "[box]" + box.title.toStdString() + " # " +
                                     box.text.toStdString() + " # " +
                                     (box.buttons == QMessageBox::Ok ? "ok" : "buttons?") +
                                     (box.hasParent ? " # parent" : "") + "[/box]\n";
            if (write(out, line.data(), line.size()) < 0) _exit(3);
        };
        Widget window;
        window.show();  // not reached
    };
    EXPECT_EXIT(report(), ::testing::ExitedWithCode(1),
                ::testing::ContainsRegex("\\[box\\]Ошибка # Не удалось открыть файл "
                                         "log-[A-Z][a-z][a-z]-[A-Z][a-z][a-z]-[-0-9][0-9]-"
                                         "[0-9][0-9]-[0-9][0-9]-[0-9][0-9]-[0-9]+\\.txt"
                                         " на запись\\. # ok\\[/box\\]"));
    ASSERT_EQ(chdir(previous), 0);
}

}  // namespace
