// The library as a host loads it: at run time, from the executable's folder, each function by its name.
#pragma once

#include "samples/host/Edge.h"

#include <chrono>
#include <string>

namespace SampleHost {

/// Owns one load of the library. Load and Unload must not run during a call.
class Library {
public:
    Library() = default;
    ~Library() { Unload(); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Throws std::runtime_error if it cannot be loaded. Does nothing if it is loaded already.
    void Load();
    void Unload() noexcept;
    /// Waits, at most that long, until the process has no such library any more. Its worker may keep it for a
    /// while after the host has freed it.
    void WaitUntilGone(std::chrono::milliseconds longest) const;
    bool IsLoaded() const noexcept { return _module != nullptr; }

    /// Null if the library is not loaded or has no such export.
    template <class Function>
    Function* Find(const std::string& name) const noexcept {
        return reinterpret_cast<Function*>(FindAddress(name.c_str()));
    }

private:
    void* FindAddress(const char* name) const noexcept;

    Edge _edge = ChosenEdge();
    void* _module = nullptr;
};

} // namespace SampleHost
