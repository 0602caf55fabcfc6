#pragma once
// Captures everything written to file descriptor 2 (std::cerr and fprintf(stderr, ...)) while an instance is alive,
// through GoogleTest's own capture, so tests can compare the run log byte for byte. One capture at a time.

#include <cstdio>
#include <iostream>
#include <string>

#include <gtest/gtest.h>

class StderrCapture {
public:
    StderrCapture() { testing::internal::CaptureStderr(); }
    ~StderrCapture() { take(false); }
    StderrCapture(const StderrCapture&) = delete;
    StderrCapture& operator=(const StderrCapture&) = delete;

    // Everything written since construction (or since the last call).
    std::string take(bool goOn = true) {
        std::cerr.flush();
        std::fflush(stderr);
        std::string text = testing::internal::GetCapturedStderr();
        if (goOn) testing::internal::CaptureStderr();
        return text;
    }
};
