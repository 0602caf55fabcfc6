#pragma once
// RunLogWriter: the run log's way to its file, as std::cerr's stream buffer.
// Every piece of text the stream hands over is written at once with
// write(2) on the writer's descriptor, nothing is buffered: with std::cerr's
// unit buffering that is one write per output operation, as when the stream
// flushed stdio's stderr after each, so the bytes and their order stay and
// every finished line is on disk. Short writes and EINTR are retried.
//
// A failed write is recorded (the first errno since restart()) and not passed
// on to the stream: std::cerr stays good, so every later line is still tried
// and lost lines are never followed by reordered ones. Qt-free; the reason is
// the C library's text for the errno.

#include <streambuf>
#include <string>

class RunLogWriter : public std::streambuf {
public:
    // A writer on an open descriptor, nobody's stream buffer yet.
    explicit RunLogWriter(int descriptor);

    // For the process's run log, once standard error is open on the file
    // fileName: makes the writer of descriptor 2 std::cerr's stream buffer
    // (later calls only take the new name). That writer is never destroyed,
    // so std::cerr can still be flushed at exit.
    static RunLogWriter& install(const std::string& fileName);
    // The writer install() made. Precondition: install() was called.
    static RunLogWriter& installed();

    // Starts a new record: forgets the failure seen so far and clears the
    // error state of std::cerr and of stdio's stderr, so that the next lines
    // are written again.
    void restart();
    // Whether every byte given since restart() (or construction) was written.
    bool complete() const { return error_ == 0; }
    // The errno of the first failed write since restart(), 0 when complete.
    int error() const { return error_; }
    // strerror() of error(), empty when complete.
    std::string reason() const;
    // The name given to install(), empty for other writers.
    const std::string& fileName() const { return fileName_; }

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;

private:
    void writeAll(const char* text, std::streamsize count);

    int descriptor_;
    int error_ = 0;
    std::string fileName_;
};
