// The C runtime's locale, which a host may set for everything in its process.
#pragma once

#include <clocale>
#include <stdexcept>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// While it lives, the runtime has the locale, and the "C" locale afterwards.
class RuntimeLocale {
public:
    /// Throws if the runtime does not know the name.
    explicit RuntimeLocale(const std::string& name) {
        if (!std::setlocale(LC_ALL, name.c_str()))
            throw std::runtime_error("no such locale: " + name);
    }
    ~RuntimeLocale() { std::setlocale(LC_ALL, "C"); }
    RuntimeLocale(const RuntimeLocale&) = delete;
    RuntimeLocale& operator=(const RuntimeLocale&) = delete;
};

/// Of one byte for each character, with other letters at the same places, and of one or two.
inline constexpr const char* HostLocales[] = {"German", "Greek", "Turkish", "Japanese"};

} // namespace Zuvan::Lumeq::Testing
