// What the double keeps: what was delivered, refused and logged, and the circumstances that a test has set.
#pragma once

#include "tools/companion/RecordText.h"

#include <cstdint>
#include <deque>
#include <map>
#include <mutex>
#include <string>

namespace Zuvan::Lumeq::Double {

/// Texts of JSON, or lines. They only grow, so their addresses stay.
using Texts = std::deque<std::string>;

struct Recording {
    Texts events;
    Texts operations;
    Texts refusals;
    Texts log;

    std::int64_t utcMilliseconds;
    std::uint64_t nextGuid = 1;
    bool nextDeliveryFails = false;
    /// The user's choices: by subfolder, then by key.
    std::map<std::wstring, std::map<std::wstring, bool>> flags;
    std::wstring subfolder;
};

/// The one recording, while the calling thread holds its lock. Not held during a call of the library's.
class LockedRecording {
public:
    LockedRecording();

    Recording* operator->() const { return &_recording; }

private:
    Recording& _recording;
    std::unique_lock<std::mutex> _lock;
};

/// All as it was when the library was loaded.
void ResetRecording();

void SetTrackingDisabled(bool isDisabled) noexcept;

/// Records what an operation of the companion library receives, with the call that is being made. Throws
/// std::runtime_error where a test wants it to fail.
void Deliver(const wchar_t* operation, const Companion::Members& members = {});

} // namespace Zuvan::Lumeq::Double
