#pragma once
// The run log of a benchmark as the window has it: standard error reopened
// onto a new file in a fresh directory under /tmp and given the window's log
// writer. Made at the first call (exiting with a message when it cannot be);
// later calls return the same path.

#include <string>

const std::string& temporaryRunLog();
