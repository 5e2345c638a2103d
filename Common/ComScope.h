// COM for the duration of one operation, apartment-threaded, on the calling thread.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Initialises COM on this thread and logs the balance under `functionName`. Takes a thread out of a
/// multithreaded apartment first. Returns the HRESULT; COM is not initialised if it is negative.
std::int32_t ComInitCounted(const std::wstring& functionName);

/// Undoes one ComInitCounted that succeeded.
void ComUninitCounted(const std::wstring& functionName);

/// Calls ComInitCounted, and undoes it at the end if it succeeded. Interface pointers must die first.
class ComScope {
public:
    explicit ComScope(std::wstring functionName)
        : _functionName(std::move(functionName)), _result(ComInitCounted(_functionName)) {}
    ~ComScope() {
        if (_owned && _result >= 0)
            ComUninitCounted(_functionName);
    }
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;

    std::int32_t Result() const noexcept { return _result; }

    /// Leaves COM initialised; the new owner calls ComUninitCounted.
    void Release() noexcept { _owned = false; }

private:
    std::wstring _functionName;
    std::int32_t _result;
    bool _owned = true;
};

} // namespace Zuvan::Lumeq::Common
