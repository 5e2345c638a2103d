#include "LumeqApi/CallFrame.h"

#include "Common/Utf.h"

namespace Zuvan::Lumeq::API {

namespace {

constexpr wchar_t ValidationFailed[] = L"Validation failed";

} // namespace

ApiMutex ApiLock;

void Call::Required(const std::wstring& value, const wchar_t* argName, const Common::Pattern& pattern,
                    int line) {
    _failed |= !CheckRequiredArg(value, argName, pattern, _name, SourceFile, line);
}

void Call::Optional(const wchar_t* value, const wchar_t* argName, const Common::Pattern& pattern, int line) {
    _failed |= !CheckOptionalArg(value, argName, pattern, _name, SourceFile, line);
}

void Call::Reject(const std::wstring& detail, int line) {
    _failed = true;
    Complain(detail, line);
}

void Call::Complain(const std::wstring& detail, int line) const {
    ReportValidationError(ValidationFailed, detail, _name, SourceFile, line);
}

void ReportException(const ExportName& name, const std::exception& exception) noexcept {
    try {
        ReportValidationError(L"Exception", Common::WidenLossy(exception.what()), name.Text(), SourceFile,
                              __LINE__);
    } catch (...) {
    }
}

void ReportUnknownException(const ExportName& name) noexcept {
    try {
        ReportValidationError(L"Unknown exception", L"???", name.Text(), SourceFile, __LINE__);
    } catch (...) {
    }
}

} // namespace Zuvan::Lumeq::API
