#pragma once
// Makes a fresh temporary directory the working directory for the lifetime of an instance, then returns to the
// previous one and removes the directory. The window writes its run log into the working directory, so every window
// test runs inside one of these.

#include <filesystem>
#include <stdexcept>
#include <string>
#include <stdlib.h>

class TempWorkDir {
public:
    TempWorkDir() : previous_(std::filesystem::current_path()) {
        char pattern[] = "/tmp/kalkora-test-XXXXXX";
        if (!mkdtemp(pattern)) throw std::runtime_error("mkdtemp failed");
        path_ = pattern;
        std::filesystem::current_path(path_);
    }
    // A test may have taken the owner's rights away, or removed the directory.
    ~TempWorkDir() {
        std::error_code ignored;
        std::filesystem::current_path(previous_, ignored);
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, std::filesystem::perm_options::add,
                                     ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TempWorkDir(const TempWorkDir&) = delete;
    TempWorkDir& operator=(const TempWorkDir&) = delete;

    const std::string& path() const { return path_; }

private:
    std::filesystem::path previous_;
    std::string path_;
};
