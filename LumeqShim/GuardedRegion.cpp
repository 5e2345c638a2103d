#include "LumeqShim/GuardedRegion.h"

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

void ReportCaughtFailure(const wchar_t* logName) noexcept { LogCaughtFailure(RegionLines{{Log, logName}}); }

} // namespace Zuvan::LumeqShim
