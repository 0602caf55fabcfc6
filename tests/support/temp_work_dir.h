#pragma once
// Makes a fresh temporary directory the working directory for the lifetime of an instance, then returns to the
// previous one and removes the directory. The window writes its run log into the working directory, so every window
// test runs inside one of these.

#include <string>

class TempWorkDir {
public:
    TempWorkDir();
    ~TempWorkDir();
    TempWorkDir(const TempWorkDir&) = delete;
    TempWorkDir& operator=(const TempWorkDir&) = delete;

    const std::string& path() const { return path_; }

private:
    std::string path_;
    std::string previous_;
};
