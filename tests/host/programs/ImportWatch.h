// Counts the calls that a library makes to its imports, starting before its entry point runs.
#pragma once

#include <windows.h>

#include <map>
#include <string>

namespace Zuvan::Lumeq::Testing {

/// Number of calls of each imported function, by "library.dll!function".
using ImportCounts = std::map<std::string, unsigned long>;

/// While one lives, every import of each loaded library with this file name is replaced by code that counts
/// the call and continues in the real function. One at a time. It must outlive the libraries.
class ImportWatch {
public:
    /// Throws std::runtime_error if the system does not report loaded libraries.
    explicit ImportWatch(const std::wstring& fileName);
    ~ImportWatch();
    ImportWatch(const ImportWatch&) = delete;
    ImportWatch& operator=(const ImportWatch&) = delete;

    /// Calls since the last Take. Also empty if no such library was loaded.
    ImportCounts Take();

private:
    void* _cookie = nullptr;
};

} // namespace Zuvan::Lumeq::Testing
