// Work that may never end.
#pragma once

#include "Common/Logger.h"

#include <chrono>
#include <future>
#include <optional>
#include <thread>

namespace Zuvan::Lumeq::Tool::Doctor {

/// Runs `work` on a thread of its own. Returns nothing if it takes longer; the thread then goes on until the
/// process ends, so `work` must own all that it uses. Throws what `work` throws.
template <class Work>
auto WithinTime(unsigned long milliseconds, Work work) -> std::optional<decltype(work())> {
    std::packaged_task<decltype(work())()> task([work = std::move(work)] {
        // The thread must not open the log, as each line of the library would.
        const Common::FirstUseDeferral deferral;
        return work();
    });
    auto result = task.get_future();
    std::thread(std::move(task)).detach();
    if (result.wait_for(std::chrono::milliseconds(milliseconds)) != std::future_status::ready)
        return std::nullopt;
    return result.get();
}

} // namespace Zuvan::Lumeq::Tool::Doctor
