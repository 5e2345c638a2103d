#include "LumeqShim/GuardedRegion.h"

#include "Common/ComError.h"
#include "Common/Exceptions.h"
#include "Common/Format.h"
#include "Common/Logger.h"

#include <windows.h>

#include <comdef.h>
#include <exception>

namespace Zuvan::LumeqShim {

namespace {

template <class... Arguments>
void LogWarning(int line, const wchar_t* format, Arguments... arguments) {
    LogMessage(Lumeq::Common::SeverityLevel::WARNING, L"LumeqShim\\GuardedRegion", line, nullptr, format,
               arguments...);
}

void LogCaughtFailure(const wchar_t* logName) {
    try {
        throw;
    } catch (const Lumeq::Common::VestoException& failure) {
        LogWarning(__LINE__, L"%s failed with VestoException exception %s", logName,
                   failure.FullMessage().c_str());
    } catch (const _com_error& failure) {
        LogWarning(__LINE__, L"%s failed with _com_error exception 0x%08lx, %s", logName,
                   static_cast<unsigned long>(failure.Error()),
                   Lumeq::Common::ComErrorText(failure.Error()).c_str());
    } catch (const std::exception& failure) {
        LogWarning(__LINE__, L"%s exception with %S", logName,
                   Lumeq::Common::NarrowArgument(failure.what()).Text());
    } catch (...) {
        LogWarning(__LINE__, L"%s failed with unknown exception", logName);
    }
}

} // namespace

void ReportCaughtFailure(const wchar_t* logName) noexcept {
    try {
        LogCaughtFailure(logName);
    } catch (...) {
        // Making the text can fail as well, and there is nobody left to tell.
    }
}

} // namespace Zuvan::LumeqShim
