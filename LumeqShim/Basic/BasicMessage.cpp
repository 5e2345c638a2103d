#include "LumeqShim/Basic/BasicMessage.h"

#include "Common/Text.h"

namespace Zuvan::LumeqShim {

namespace {

std::wstring Quoted(const std::wstring& text) {
    std::wstring quoted = L"\"";
    for (const wchar_t unit : text) {
        if (unit == L'"' || unit == L'\\')
            quoted += L'\\';
        quoted += unit;
    }
    return quoted + L'"';
}

} // namespace

std::wstring SerializeFlatJson(MessageDictionary message) {
    std::wstring json = L"{";
    for (const auto& [key, value] : message) {
        if (json.size() > 1)
            json += L',';
        json += Quoted(key) + L':' + Quoted(value);
    }
    return json + L'}';
}

std::wstring UuidFromGuid(const std::wstring& bracedGuid) {
    return bracedGuid.size() < 2 ? std::wstring()
                                 : Lumeq::Common::ToLower(bracedGuid.substr(1, bracedGuid.size() - 2));
}

} // namespace Zuvan::LumeqShim
