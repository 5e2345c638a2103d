#include "LumeqApi/Arguments.h"

namespace Zuvan::Lumeq::API {

std::wstring QuoteArg(const wchar_t* text) { return text ? QuoteArg(std::wstring_view(text)) : L"(null)"; }

std::wstring QuoteArg(std::wstring_view text) { return std::wstring(L"\"").append(text).append(L"\""); }

std::wstring CountArg(const StringDictionary* dictionary) {
    return dictionary ? CountArg(*dictionary) : L"(null)";
}

void AppendToTrace(std::wstring& line, const wchar_t* label, const std::wstring& rendered,
                   const wchar_t* mark) {
    if (!line.empty())
        line.append(L", ");
    line.append(label).append(L": ").append(mark).append(rendered.c_str()).append(mark);
}

bool RefuseArgument(const Call& call, const wchar_t* kind, const wchar_t* name, std::wstring_view value,
                    int line) {
    std::wstring detail;
    if (Common::IsLogged(Common::SeverityLevel::ERROR))
        detail = std::wstring(L"invalid ") + kind + L" " + name + L" arg: " + QuoteArg(value);
    return call.Refuse(detail, line);
}

} // namespace Zuvan::Lumeq::API
