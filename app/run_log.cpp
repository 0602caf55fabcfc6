#include "app/run_log.h"

#include <cstring>

std::string runLogFileName(const char* timeText) {
    std::string text(timeText);
    if (!text.empty()) text.erase(text.size() - 1);
    for (char& c : text) {
        if (c == ':' || c == ' ') c = '-';
    }

    char name[100] = "";
    std::strncat(name, "log-", sizeof name - std::strlen(name) - 1);
    std::strncat(name, text.c_str(), sizeof name - std::strlen(name) - 1);
    std::strncat(name, ".txt", sizeof name - std::strlen(name) - 1);
    return name;
}
