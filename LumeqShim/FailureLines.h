// The warnings with which delivery reports a caught exception.
#pragma once

#include "Common/CaughtFailure.h"
#include "Common/ComError.h"
#include "Common/Format.h"
#include "Common/Logger.h"

#include <windows.h>

#include <comdef.h>
#include <exception>

namespace Zuvan::LumeqShim {

/// A sink for VisitCaughtFailure: logs one WARNING under `name`.
struct FailureLines {
    void operator()(const _com_error& failure) const {
        log(Lumeq::Common::SeverityLevel::WARNING, L"%s failed with _com_error exception 0x%08lx, %s", name,
            failure.Error(), Lumeq::Common::ComErrorText(failure.Error()).c_str());
    }
    void operator()(const std::exception& failure) const {
        log(Lumeq::Common::SeverityLevel::WARNING, L"%s exception with %S", name,
            Lumeq::Common::NarrowArgument(failure.what()).Text());
    }
    void operator()() const {
        log(Lumeq::Common::SeverityLevel::WARNING, L"%s failed with unknown exception", name);
    }

    Lumeq::Common::LogSource log;
    const wchar_t* name;
};

/// In a catch clause: logs the exception that is being handled. Drops whatever the report itself throws,
/// because there is no one left to report that to.
template <class Lines>
void LogCaughtFailure(const Lines& lines) noexcept {
    try {
        Lumeq::Common::VisitCaughtFailure(lines);
    } catch (...) {
    }
}

} // namespace Zuvan::LumeqShim
