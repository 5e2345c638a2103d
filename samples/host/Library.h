// Lumeq.dll as a host loads it: at run time, from beside the executable, each function by its name.
#pragma once

#include <chrono>
#include <string>

namespace SampleHost {

/// Owns one loading of the library. Load and Unload must not run beside a call.
class Library {
public:
    Library() = default;
    ~Library() { Unload(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Throws std::runtime_error if it cannot be loaded. Loaded already: nothing happens.
    void Load();
    void Unload() noexcept;
    /// Until this process has no such library any more, at most so long: a worker of its own may keep it for
    /// a while after the host has let it go.
    static void WaitUntilGone(std::chrono::milliseconds longest);
    bool IsLoaded() const noexcept { return _module != nullptr; }

    /// Null if the library is not loaded or has no such export.
    template <class Function>
    Function* Find(const std::string& name) const noexcept {
        return reinterpret_cast<Function*>(FindAddress(name.c_str()));
    }

private:
    void* FindAddress(const char* name) const noexcept;

    void* _module = nullptr;
};

} // namespace SampleHost
