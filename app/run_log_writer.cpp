#include "app/run_log_writer.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <unistd.h>

namespace {

RunLogWriter* processWriter = nullptr;

}  // namespace

RunLogWriter::RunLogWriter(int descriptor) : descriptor_(descriptor) {}

RunLogWriter& RunLogWriter::install(const std::string& fileName) {
    // Allocated once and kept: std::cerr is flushed after static objects of
    // this file would have been destroyed.
    if (!processWriter) processWriter = new RunLogWriter(STDERR_FILENO);
    processWriter->fileName_ = fileName;
    std::cerr.rdbuf(processWriter);
    return *processWriter;
}

RunLogWriter& RunLogWriter::installed() {
    return *processWriter;
}

void RunLogWriter::restart() {
    error_ = 0;
    std::cerr.clear();
    std::clearerr(stderr);
}

std::string RunLogWriter::reason() const {
    return error_ ? std::strerror(error_) : std::string();
}

RunLogWriter::int_type RunLogWriter::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    const char byte = traits_type::to_char_type(c);
    writeAll(&byte, 1);
    return c;
}

std::streamsize RunLogWriter::xsputn(const char* text, std::streamsize count) {
    writeAll(text, count);
    return count;
}

void RunLogWriter::writeAll(const char* text, std::streamsize count) {
    while (count > 0) {
        const ssize_t written = ::write(descriptor_, text, static_cast<size_t>(count));
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            // A write of nothing would repeat for ever; no file system gives
            // one for a regular file, so it counts as an I/O error.
            if (error_ == 0) error_ = written < 0 ? errno : EIO;
            return;
        }
        text += written;
        count -= written;
    }
}
