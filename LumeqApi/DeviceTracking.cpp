#include "LumeqApi/DeviceTracking.h"

#include "LumeqApi/Patterns.h"
#include "LumeqShim/LumeqNativeShim.h"

#include <stdexcept>

namespace Zuvan::Lumeq::API {

namespace {

using Common::SeverityLevel;

constexpr wchar_t BiidKey[] = L"dev_biid";
constexpr wchar_t PrinterListType[] = L"sys_printer_discoverylist";

// A checked lookup whose failure reads the same whatever the standard library.
const std::wstring& FieldAt(const StringDictionary& fields, const wchar_t* key) {
    const auto field = fields.find(key);
    if (field == fields.end())
        throw std::out_of_range("invalid unordered_map<K, T> key");
    return field->second;
}

} // namespace

void PostDiscoveredDevice(const Call& call, const DiscoveredDevice& device) {
    const StringDictionary information = device.information;
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

} // namespace Zuvan::Lumeq::API
