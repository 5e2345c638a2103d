// The C runtime's locale, which a host may set for everything in its process.
#pragma once

#include <clocale>
#include <stdexcept>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// While one lives, the runtime has the locale; afterwards the "C" locale.
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

/// Two with one byte for each character and different letters at the same values, and one with one or two
/// bytes.
inline constexpr const char* HostLocales[] = {"German", "Greek", "Turkish", "Japanese"};

} // namespace Zuvan::Lumeq::Testing
