#pragma once

#include "LumeqLib/Extra/Eventing/GenericDetails.h"

namespace Zuvan::Lumeq::Extra::Eventing {

inline constexpr GenericKind ReportKind{L"app_event_report_generic/1.0.0", L"report_generic",
                                        IsValidReportMoniker,
                                        L"Moniker is not formatted correctly. Moniker identifier in form of "
                                        L"x-{orgname}_{codename}_report_{myreportname}/{version-1dot} "
                                        L"(e.g. x-dvrn_tarvik_report_setup/1.0)"};

using GenericReport = GenericDetails<ReportKind>;

} // namespace Zuvan::Lumeq::Extra::Eventing
