// The platform's functions that the library calls, each of which can be made to fail once.
#pragma once

#include "faults/ExportRun.h"
#include "support/ImportedFunction.h"

#include <iosfwd>
#include <optional>
#include <span>

namespace Zuvan::Lumeq::Testing {

/// One function, and a first call of the library that comes to it.
struct PlatformCall {
    const char* library;
    const char* function;
    void* failing; ///< Takes its place: fails when it is time, and else calls `*real`.
    void** real;
    const char* exported;
    Road road;
    const char* logLevel;
    /// Where the library comes to the function only if another one gives something else than usual, as it
    /// does meanwhile; else null.
    const char* otherLibrary = nullptr;
    const char* otherFunction = nullptr;
    void* other = nullptr;

    PlatformCall While(const char* library, const char* function, void* replacement) const;
};
std::ostream& operator<<(std::ostream& stream, const PlatformCall& call);

std::span<const PlatformCall> PlatformCalls();

/// While it lives, the `nth` call that the module makes to the function, counted from 1, fails. One at a
/// time.
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
