#pragma once
// The floating-point and locale settings under which the expression tests compare the fast evaluation with the text
// route: each rounding mode set by fesetround, each register alone (x86-64), flush-to-zero with
// denormals-are-zero, and a locale whose decimal point is "," for the whole process and for the thread alone (when
// the machine has one: scripts/install-deps.sh generates ru_RU.UTF-8).

#include <cfenv>
#include <clocale>
#include <cstring>
#include <langinfo.h>
#include <locale.h>
#include <string>
#include <vector>
#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

struct NumberSetting {
    std::string name;
    void (*enter)();
    void (*leave)();
};

namespace number_settings {

inline void nothing() {}
inline void nearest() { std::fesetround(FE_TONEAREST); }

#if defined(__x86_64__)
inline void setX87Rounding(unsigned short mode) {
    unsigned short word;
    __asm__ __volatile__("fnstcw %0" : "=m"(word));
    word = static_cast<unsigned short>((word & ~0x0C00) | mode);
    __asm__ __volatile__("fldcw %0" : : "m"(word));
}
inline void setMxcsr(unsigned clear, unsigned set) { _mm_setcsr((_mm_getcsr() & ~clear) | set); }
#endif

// A locale with a decimal point other than ".", or nullptr.
inline const char* commaLocaleName() {
    static const char* const found = [] {
        for (const char* name : {"ru_RU.UTF-8", "ru_RU.utf8", "de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
            if (locale_t l = newlocale(LC_NUMERIC_MASK, name, nullptr)) {
                const bool comma = std::strcmp(nl_langinfo_l(RADIXCHAR, l), ".") != 0;
                freelocale(l);
                if (comma) return name;
            }
        }
        return static_cast<const char*>(nullptr);
    }();
    return found;
}

inline locale_t& threadLocale() {
    static locale_t l = nullptr;
    return l;
}

}  // namespace number_settings

// Every setting this machine can have; the first is the standard one.
inline std::vector<NumberSetting> numberSettings() {
    using namespace number_settings;
    std::vector<NumberSetting> all = {
        {"standard", nothing, nothing},
        {"upward", [] { std::fesetround(FE_UPWARD); }, nearest},
        {"downward", [] { std::fesetround(FE_DOWNWARD); }, nearest},
        {"toward zero", [] { std::fesetround(FE_TOWARDZERO); }, nearest},
#if defined(__x86_64__)
        {"x87 upward", [] { setX87Rounding(FE_UPWARD); }, nearest},
        {"SSE upward", [] { setMxcsr(0x6000, 0x4000); }, nearest},
        {"SSE toward zero", [] { setMxcsr(0x6000, 0x6000); }, nearest},
        {"flush to zero, denormals are zero", [] { setMxcsr(0, 0x8040); }, [] { setMxcsr(0x8040, 0); }},
#endif
    };
    if (commaLocaleName() != nullptr) {
        all.push_back({"global decimal comma", [] { std::setlocale(LC_NUMERIC, commaLocaleName()); },
                       [] { std::setlocale(LC_NUMERIC, "C"); }});
        all.push_back({"thread decimal comma",
                       [] {
                           threadLocale() = newlocale(LC_NUMERIC_MASK, commaLocaleName(), duplocale(LC_GLOBAL_LOCALE));
                           uselocale(threadLocale());
                       },
                       [] {
                           uselocale(LC_GLOBAL_LOCALE);
                           freelocale(threadLocale());
                       }});
    }
    return all;
}
