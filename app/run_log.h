#pragma once
// The name of the run log file, made from the start time in ctime()'s text
// form ("Mon Nov 16 18:55:06 2026\n"): the line end is cut, every ':' and
// blank becomes '-', and the text is framed by "log-" and ".txt", so that
// the example gives log-Mon-Nov-16-18-55-06-2026.txt. A single-digit day is
// padded by ctime() with a blank and so yields two dashes (Nov--6).
// The name is built in a 100-byte buffer: longer texts are cut to 99 bytes.

#include <string>

std::string runLogFileName(const char* timeText);
