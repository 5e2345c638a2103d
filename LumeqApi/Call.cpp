#include "LumeqApi/Call.h"

#include "Common/Debugger.h"
#include "Common/HostFile.h"
#include "Common/Text.h"
#include "Common/Utf.h"

#include <algorithm>
#include <cwchar>

namespace Zuvan::Lumeq::API {

using Common::SeverityLevel;

namespace {

template <class Report>
void ReportCaught(Report report) noexcept {
    try {
        report();
    } catch (...) {
        // There is no memory for the line. The developer needs none to stop here.
        Common::BreakIfDebugged();
    }
}

} // namespace

ApiMutex ApiLock;

QualifiedName::QualifiedName(ExportName name) noexcept {
    wchar_t* const plain = std::copy(std::begin(Namespace), std::end(Namespace) - 1, _text);
    std::copy_n(name.Plain(), std::wcslen(name.Plain()) + 1, plain);
}

void ReportValidationError(const wchar_t* title, const std::wstring& detail, const wchar_t* function,
                           int line) {
    if (Common::IsLogged(SeverityLevel::ERROR)) {
        const std::wstring message = std::wstring(title) + L" in " + function + L": " + detail +
                                     L". LumeqApi(" + Common::DecimalText(line) + L")";
        Common::LogMessage(SeverityLevel::ERROR, L"LumeqApi", line, nullptr, L"%s: %s",
                           Common::GetExecutableName().c_str(), message.c_str());
    }
    Common::BreakIfDebugged();
}

bool Call::Refuse(const std::wstring& detail, int line) const {
    ReportValidationError(L"Validation failed", detail, QualifiedName(_name).Text(), line);
    return false;
}

void ReportException(ExportName name, const std::exception& exception) noexcept {
    ReportCaught([&] {
        ReportValidationError(L"Exception", Common::WidenLossy(exception.what()), QualifiedName(name).Text(),
                              __LINE__);
    });
}

void ReportUnknownException(ExportName name) noexcept {
    ReportCaught(
        [&] { ReportValidationError(L"Unknown exception", L"???", QualifiedName(name).Text(), __LINE__); });
}

} // namespace Zuvan::Lumeq::API
