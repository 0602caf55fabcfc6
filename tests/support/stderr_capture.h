#pragma once
// Captures everything written to file descriptor 2 (std::cerr and
// fprintf(stderr, ...)) while an instance is alive, so tests can compare the
// run log byte for byte. Not reentrant: one capture at a time.

#include <string>

class StderrCapture {
public:
    StderrCapture();
    ~StderrCapture();
    StderrCapture(const StderrCapture&) = delete;
    StderrCapture& operator=(const StderrCapture&) = delete;

    // Everything written since construction (or since the last call).
    std::string take();

private:
    int savedFd_ = -1;
    int fileFd_ = -1;
    long consumed_ = 0;
};
