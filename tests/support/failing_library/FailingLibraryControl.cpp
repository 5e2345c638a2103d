#include "support/failing_library/FailingLibraryControl.h"

#include "LumeqApi/Call.h"
#include "LumeqLib/Core/Utils/Settings.h"

#include <mutex>
#include <optional>

namespace Zuvan::Lumeq::Testing {

namespace {

std::optional<FailingAllocation> failing;

void Arm(int nth, AllocatingThreads threads) { failing.emplace(nth, threads); }

bool Disarm() {
    const bool happened = failing->Happened();
    failing.reset();
    return happened;
}

bool AreLocksFree() {
    const std::unique_lock api(API::ApiLock, std::try_to_lock);
    const std::unique_lock settings(Core::Utils::SettingsLock(), std::try_to_lock);
    return api && settings;
}

constexpr FailingLibraryControl Control{&Arm, &Disarm, &LiveBlocks, &AreLocksFree};

} // namespace

extern "C" __declspec(dllexport) const FailingLibraryControl* FailingLibrary_Control() { return &Control; }

} // namespace Zuvan::Lumeq::Testing
