#include "LumeqShim/Basic/OptInFrame.h"

#include "Common/ComError.h"
#include "Common/Format.h"

#include <windows.h>

#include <comdef.h>
#include <exception>

namespace Zuvan::LumeqShim {

using Lumeq::Common::SeverityLevel;

void LogCaughtInOptIn(const OptInOperation& operation) {
    try {
        throw;
    } catch (const _com_error& failure) {
        LogOptIn(SeverityLevel::WARNING, L"%s failed with _com_error exception 0x%08lx, %s", operation.name,
                 failure.Error(), Lumeq::Common::ComErrorText(failure.Error()).c_str());
    } catch (const std::exception& failure) {
        LogOptIn(SeverityLevel::WARNING, L"%s exception with %S", operation.name,
                 Lumeq::Common::NarrowArgument(failure.what()).Text());
    } catch (...) {
        LogOptIn(SeverityLevel::WARNING, L"%s failed with unknown exception", operation.name);
    }
}

} // namespace Zuvan::LumeqShim
