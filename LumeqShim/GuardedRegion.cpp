#include "LumeqShim/GuardedRegion.h"

#include "Common/CaughtFailure.h"
#include "LumeqShim/FailureLines.h"

namespace Zuvan::LumeqShim {

namespace {

constexpr Lumeq::Common::LogSource Log(L"LumeqShim\\GuardedRegion");

/// Unlike the opt-in store, a region shows all that an exception of the library's own knows.
struct RegionLines : FailureLines {
    using FailureLines::operator();
    void operator()(const Lumeq::Common::VestoException& failure) const {
        log(Lumeq::Common::SeverityLevel::WARNING, L"%s failed with VestoException exception %s", name,
            failure.FullMessage().c_str());
    }
};

} // namespace

void ReportCaughtFailure(const wchar_t* logName) noexcept {
    try {
        Lumeq::Common::VisitCaughtFailure(RegionLines{{Log, logName}});
    } catch (...) {
        // Composing the line can fail as well, and there is no one left to report to.
    }
}

} // namespace Zuvan::LumeqShim
