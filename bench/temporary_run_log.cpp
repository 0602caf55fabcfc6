#include "temporary_run_log.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "app/run_log_writer.h"

const std::string& temporaryRunLog()
{
    static const std::string path = [] {
        char dir[] = "/tmp/kalkora-bench-XXXXXX";
        if (!mkdtemp(dir)) {
            std::perror("mkdtemp");
            std::exit(1);
        }
        const std::string name = std::string(dir) + "/log.txt";
        if (!std::freopen(name.c_str(), "w", stderr)) {
            std::perror("freopen");
            std::exit(1);
        }
        RunLogWriter::install(name);
        return name;
    }();
    return path;
}
