#include "temp_work_dir.h"

#include <climits>
#include <filesystem>
#include <stdexcept>
#include <stdlib.h>
#include <unistd.h>

TempWorkDir::TempWorkDir() {
    char cwd[PATH_MAX];
    if (!getcwd(cwd, sizeof cwd)) throw std::runtime_error("getcwd failed");
    previous_ = cwd;
    char pattern[] = "/tmp/kalkora-test-XXXXXX";
    if (!mkdtemp(pattern)) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
    if (chdir(path_.c_str()) != 0) throw std::runtime_error("chdir failed");
}

TempWorkDir::~TempWorkDir() {
    if (chdir(previous_.c_str()) != 0) return;
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
}
