// A plain mutex that refuses its holder instead of letting it wait for itself.
#pragma once

#include "Common/ThreadNumber.h"

#include <atomic>
#include <cstdint>
#include <mutex>

namespace Zuvan::Lumeq::API {

/// Not recursive.
class ApiMutex {
public:
    /// Throws std::system_error: resource_deadlock_would_occur where the calling thread holds it already, and
    /// what std::mutex throws. std::bad_alloc where there is no memory for its text.
    void lock();
    bool try_lock() noexcept {
        const std::uint32_t caller = Common::ThreadNumber();
        if (IsHeldBy(caller) || !_mutex.try_lock())
            return false;
        SetHolder(caller);
        return true;
    }
    void unlock() noexcept {
        SetHolder(Nobody);
        _mutex.unlock();
    }

private:
    static constexpr std::uint32_t Nobody = 0;

    // Relaxed is enough: a caller finds its own number only if it wrote that itself and has not overwritten
    // it since, whatever other threads write meanwhile.
    bool IsHeldBy(std::uint32_t caller) const noexcept {
        return _holder.load(std::memory_order_relaxed) == caller;
    }
    void SetHolder(std::uint32_t thread) noexcept { _holder.store(thread, std::memory_order_relaxed); }

    std::mutex _mutex;
    std::atomic<std::uint32_t> _holder{Nobody};
};

} // namespace Zuvan::Lumeq::API
