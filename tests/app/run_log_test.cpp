#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <string>
#include <unistd.h>

#include "app/run_log.h"
#include "app/widget.h"
#include "modal_box_catcher.h"
#include "temp_work_dir.h"

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

}  // namespace
