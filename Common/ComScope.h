// COM for the length of one operation, apartment-threaded, on the calling thread.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

/// Initialises COM on this thread and logs the balance under `functionName`. A thread that is in a
/// multithreaded apartment is taken out of it first. Gives the HRESULT; negative: not initialised.
std::int32_t ComInitCounted(const std::wstring& functionName);

/// Undoes one ComInitCounted that succeeded.
void ComUninitCounted(const std::wstring& functionName);

/// ComInitCounted, undone at the end if it succeeded. Interface pointers must die before it.
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

    /// Leaves COM initialised: whoever takes over calls ComUninitCounted.
    void Release() noexcept { _owned = false; }

private:
    std::wstring _functionName;
    std::int32_t _result;
    bool _owned = true;
};

} // namespace Zuvan::Lumeq::Common
