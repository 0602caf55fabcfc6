#include "stderr_capture.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <unistd.h>

StderrCapture::StderrCapture() {
    std::cerr.flush();
    std::fflush(stderr);
    char name[] = "/tmp/kalkora-stderr-XXXXXX";
    fileFd_ = mkstemp(name);
    if (fileFd_ < 0) throw std::runtime_error("mkstemp failed");
    unlink(name);
    savedFd_ = dup(2);
    dup2(fileFd_, 2);
}

StderrCapture::~StderrCapture() {
    std::cerr.flush();
    std::fflush(stderr);
    dup2(savedFd_, 2);
    close(savedFd_);
    close(fileFd_);
}

std::string StderrCapture::take() {
    std::cerr.flush();
    std::fflush(stderr);
    std::string out;
    char buf[4096];
    for (;;) {
        ssize_t got = pread(fileFd_, buf, sizeof buf, consumed_);
        if (got <= 0) break;
        out.append(buf, static_cast<size_t>(got));
        consumed_ += got;
    }
    return out;
}
