#include "LumeqLib/Core/Utils/FailureReport.h"

#include "Common/ComError.h"
#include "Common/Debugger.h"
#include "Common/Utf.h"

#include <windows.h>

#include <comdef.h>
#include <exception>

namespace Zuvan::Lumeq::Core::Utils {

void ReportCaughtToDebugger(const wchar_t* prefix) {
    try {
        throw;
    } catch (const _com_error& failure) {
        const std::string text = Common::ToUtf8Lossy(Common::ComErrorText(failure.Error()));
        Common::ReportToDebugger(prefix, text.c_str());
    } catch (const std::exception& failure) {
        Common::ReportToDebugger(prefix, failure.what());
    } catch (...) {
        Common::ReportToDebugger(prefix, "???");
    }
}

} // namespace Zuvan::Lumeq::Core::Utils
