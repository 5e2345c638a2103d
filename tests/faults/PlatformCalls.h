// The platform functions that the library calls. Each can be made to fail once.
#pragma once

#include "faults/ExportRun.h"
#include "support/ImportedFunction.h"

#include <iosfwd>
#include <optional>
#include <span>

namespace Zuvan::Lumeq::Testing {

/// One function, and a first call of the library that reaches it.
struct PlatformCall {
    const char* library;
    const char* function;
    void* failing; ///< Replacement: fails at the chosen call, otherwise calls `*real`.
    void** real;
    const char* exported;
    Road road;
    const char* logLevel;
    /// A second function whose replaced result makes the library reach the first one; null if the library
    /// reaches it anyway.
    const char* otherLibrary = nullptr;
    const char* otherFunction = nullptr;
    void* other = nullptr;

    PlatformCall While(const char* library, const char* function, void* replacement) const;
};
std::ostream& operator<<(std::ostream& stream, const PlatformCall& call);

std::span<const PlatformCall> PlatformCalls();

/// While one lives, the module's `nth` call of the function, counted from 1, fails. One at a time.
class FailingPlatformCall {
public:
    FailingPlatformCall(HMODULE module, const PlatformCall& call, int nth);
    ~FailingPlatformCall();
    FailingPlatformCall(const FailingPlatformCall&) = delete;
    FailingPlatformCall& operator=(const FailingPlatformCall&) = delete;

    bool Happened() const;

private:
    std::optional<ImportedFunction<void()>> _other;
    void** _slot;
    void* _original;
};

} // namespace Zuvan::Lumeq::Testing
