#include "LumeqApi/Validation.h"

#include "Common/Debugger.h"
#include "Common/HostFile.h"
#include "Common/Logger.h"

namespace Zuvan::Lumeq::API {

namespace {

using Common::SeverityLevel;

bool RejectArg(const wchar_t* kind, const wchar_t* argName, const std::wstring& value,
               const wchar_t* function, const wchar_t* file, int line) {
    return ReportValidationError(
        L"Validation failed", std::wstring(L"invalid ") + kind + L" " + argName + L" arg: " + QuoteArg(value),
        function, file, line);
}

} // namespace

bool CheckRequiredArg(const std::wstring& value, const wchar_t* argName, const Common::Pattern& pattern,
                      const wchar_t* function, const wchar_t* file, int line) {
    return pattern.Matches(value) || RejectArg(L"[REQUIRED]", argName, value, function, file, line);
}

bool CheckOptionalArg(const wchar_t* value, const wchar_t* argName, const Common::Pattern& pattern,
                      const wchar_t* function, const wchar_t* file, int line) {
    return value == nullptr || pattern.Matches(value) ||
           RejectArg(L"[optional]", argName, value, function, file, line);
}

bool ReportValidationError(const wchar_t* title, const std::wstring& detail, const wchar_t* function,
                           const wchar_t* file, int line) {
    if (Common::IsLogged(SeverityLevel::ERROR)) {
        const std::wstring message = std::wstring(title) + L" in " + function + L": " + detail + L". " +
                                     file + L"(" + std::to_wstring(line) + L")";
        Common::LogMessage(SeverityLevel::ERROR, file, line, nullptr, L"%s: %s",
                           Common::GetExecutableName().c_str(), message.c_str());
    }
    Common::BreakIfDebugged();
    return false;
}

std::wstring QuoteArg(const wchar_t* text) { return text ? QuoteArg(std::wstring(text)) : L"(null)"; }

std::wstring QuoteArg(const std::wstring& text) { return L"\"" + text + L"\""; }

std::wstring CountArg(const StringDictionary* dictionary) {
    return dictionary ? CountArg(*dictionary) : L"(null)";
}

std::wstring CountArg(const StringDictionary& dictionary) {
    return L"[" + std::to_wstring(dictionary.size()) + L" item(s)]";
}

} // namespace Zuvan::Lumeq::API
