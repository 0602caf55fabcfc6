#pragma once
// LogLineWriter: writes run-log lines to std::cerr, each assembled in memory
// and handed over in one write, newline included, then flushed as std::endl
// does. Fields come out as `std::cerr << field` writes them in the stream's
// default format: texts as they are, integers in decimal, doubles like
// printf's "%g" (6 significant digits).
//
// Whether std::cerr has that format is decided once, at construction: any
// flag but skipws and unitbuf, a precision other than 6, a field width, a
// locale other than the classic one or exceptions on errors, or a rounding
// mode other than to nearest (printf rounds by it), and every field goes to
// std::cerr on its own instead. The stream tied to std::cerr (std::cout) is
// flushed at construction, not before each line. So one object serves a run
// of lines during which nothing else changes std::cerr or the rounding mode
// or writes to the tied stream.

#include <cstddef>
#include <string>

class LogLineWriter {
public:
    LogLineWriter();

    LogLineWriter& operator<<(const char* text);
    LogLineWriter& operator<<(int value);
    LogLineWriter& operator<<(double value);
    // Ends the line: the effect of std::endl.
    void endLine();

    // Writes value as printf("%g") does in the C locale when rounding to
    // nearest: at most 6 significant digits, "inf", "-nan", "-0", "1e+06".
    // Needs 24 bytes at out; returns the end of the text (not terminated).
    static char* formatDouble(char* out, double value);

private:
    // Room for count more bytes after the line so far, line_[0, used_).
    char* room(std::size_t count);

    std::string line_;
    std::size_t used_ = 0;
    bool assembling_;
};
