// Counts the calls that a library makes of what it imports, from before its entry point is run.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// How often each imported function was called; "library.dll!function" to count.
using ImportCounts = std::map<std::string, unsigned long>;

/// While one lives, every library of this file name that is loaded has each of its imported functions
/// replaced by a stand-in that counts and goes on to the function itself. One at a time; it must outlive the
/// libraries.
class ImportWatch {
public:
    /// Throws std::runtime_error if the system does not tell of libraries that are loaded.
    explicit ImportWatch(const std::wstring& fileName);
    ~ImportWatch();
    ImportWatch(const ImportWatch&) = delete;
    ImportWatch& operator=(const ImportWatch&) = delete;

    /// Of the calls since the last time. Empty as well if no such library was loaded.
    ImportCounts Take();

private:
    void* _cookie = nullptr;
};

} // namespace Zuvan::Lumeq::Testing
