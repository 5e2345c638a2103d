#include "LumeqApi/Devices.h"

#include "Common/RecordMemory.h"
#include "Common/Text.h"
#include "LumeqLib/Extra/Collection/DeviceIdentifier.h"
#include "LumeqShim/LumeqNativeShim.h"

#include <cerrno>
#include <cwchar>
#include <stdexcept>

namespace Zuvan::Lumeq::API {

using Common::SeverityLevel;

namespace {

constexpr wchar_t BiidKey[] = L"dev_biid";
constexpr wchar_t PrinterListType[] = L"sys_printer_discoverylist";

// Throws the same text with every standard library.
const std::wstring& FieldAt(const StringDictionary& fields, const wchar_t* key) {
    const auto field = fields.find(key);
    if (field == fields.end())
        throw std::out_of_range("invalid unordered_map<K, T> key");
    return field->second;
}

void PostDiscoveredDevice(const Call& call, const DiscoveredDevice& device) {
    const auto information =
        Common::InRecordMemory([&device] { return StringDictionary(device.information); });
    if (information.empty()) {
        call.Log(SeverityLevel::WARNING,
                 L"skipping discovered device with no information (empty dictionary)");
        return;
    }
    const std::wstring& biid = FieldAt(device.information, BiidKey);
    if (!biidPattern.Matches(biid)) {
        call.Log(SeverityLevel::WARNING, L"skipping discovered device with invalid BIID: %s",
                 QuoteArg(biid).c_str());
        return;
    }
    LumeqShim::PostDataXX(information, PrinterListType);
}

} // namespace

void PostDiscoveredDevices(const Call& call, const DiscoveredDeviceList& devices) {
    for (const DiscoveredDevice& device : devices)
        PostDiscoveredDevice(call, device);
}

void IdentifyDevice(const Call& call, const std::string& deviceUuid, std::wstring& biid) {
    // The platform's printf widens the text, as no row of a list would.
    if (call.IsTraced())
        call.Log(SeverityLevel::TRACE, L"deviceUuid: \"%S\"",
                 Common::NarrowArgument(deviceUuid.c_str()).Text());
    if (deviceUuid.empty()) {
        call.Refuse(L"empty deviceUuid");
        return;
    }
    // The identifier covers the text up to its first zero.
    biid = Common::ToLower(Extra::Collection::HmacSha256Hex(deviceUuid.c_str()));
    Trace(call, Traced{L"...returns biid", biid});
}

void NumberedMethod::TraceTo(std::wstring& line) const {
    const auto number = static_cast<std::int32_t>(enumValue);
    AppendToTrace(line, L"enumValue", Render(enumValue) + L" (" + Render(number) + L")");
}

void NameMethod(const Call& call, ConnectionMethodType enumValue, std::wstring& textValue) {
    textValue = Extra::Eventing::ApiText(enumValue);
    Trace(call, Traced{L"...returns textValue", textValue});
}

std::int32_t CopyToBuffer(wchar_t* buffer, std::size_t size, const std::wstring& text) noexcept {
    if (buffer == nullptr || size == 0)
        return EINVAL;
    const std::size_t length = std::wcslen(text.c_str());
    if (length >= size) {
        buffer[0] = L'\0';
        return ERANGE;
    }
    std::wmemcpy(buffer, text.c_str(), length + 1);
    return 0;
}

} // namespace Zuvan::Lumeq::API
