// The switch in the user's registry.
#include "Common/TrackingGate.h"
#include "lumeq/doctor/Examination.h"

namespace Zuvan::Lumeq::Tool::Doctor {

void CheckRegistry(Examination& examination) {
    constexpr char Value[] = R"(HKEY_CURRENT_USER\Software\Zuvan\NG\Tracking\Lumeq, TrackingDisabled)";
    if (Common::IsTrackingDisabled())
        examination.report.Wrong(Id::TrackingDisabled, Value);
    else
        examination.report.Well(Check::Registry, "tracking is not disabled");
}

} // namespace Zuvan::Lumeq::Tool::Doctor
