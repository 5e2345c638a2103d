// The switch in the user's registry that disables tracking.
#pragma once

namespace Zuvan::Lumeq::Common {

/// What the registry says now. The library itself asks once in a process: IsTrackingDisabled.
bool ReadTrackingDisabled();

} // namespace Zuvan::Lumeq::Common
