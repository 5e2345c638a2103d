// The device exports: printers, the device identifier, and the text of a connection method.
#include "LumeqLib/Extra/Collection/BiidKey.h"
#include "fuzz/native/Machine.h"
#include "fuzz/support/ExportModel.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainHmac.h"
#include "fuzz/support/Require.h"

#include <Lumeq/LumeqApi.h>

#include <cstring>
#include <iterator>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

constexpr wchar_t BiidField[] = L"dev_biid";

/// Results of a list: the data, the WARNING lines, and whether a device without an identifier ended it.
struct ExpectedList {
    std::vector<Machine::PostedData> data;
    std::vector<std::wstring> warnings;
    bool isEnded = false;

    void Add(const API::StringDictionary& device) {
        if (isEnded)
            return;
        if (device.empty())
            return warnings.push_back(L"skipping discovered device with no information (empty dictionary)");
        isEnded = !device.contains(BiidField);
        if (isEnded)
            return;
        const std::wstring& biid = device.at(BiidField);
        if (!PlainlyMatches(Kind::Biid, biid)) {
            const std::wstring warning = L"skipping discovered device with invalid BIID: \"" + biid + L"\"";
            return warnings.push_back(warning.c_str()); // up to a zero
        }
        data.push_back({L"sys_printer_discoverylist", device});
    }
};

void FuzzPrinters(Input& input) {
    API::DiscoveredDeviceList devices(input.Choice(4));
    ExpectedList expected;
    for (API::DiscoveredDevice& device : devices) {
        device.information = input.Fields();
        if (input.Choice(2) == 1)
            device.information[BiidField] = ReadText(input);
        expected.Add(device.information);
    }
    ExpectedCall call(L"TrackDiscoveredPrintersEx");
    if (expected.isEnded)
        call.Exception(L"invalid unordered_map<K, T> key");
    API::TrackDiscoveredPrintersEx(devices);
    call.RequireErrors();
    Require(TheMachine().data == expected.data, "devices with a valid identifier arrive in order");
    Require(TheMachine().Messages(Common::SeverityLevel::WARNING) == expected.warnings,
            "a device that is skipped has its line");
}

std::wstring PlainIdentifier(const std::string& deviceUuid) {
    const std::string message = deviceUuid.c_str();
    const auto bytes = [](std::string_view text) {
        return std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    };
    std::wstring hex;
    for (const std::uint8_t byte : PlainHmac(bytes(Extra::Collection::BiidKey), bytes(message))) {
        hex += L"0123456789abcdef"[byte / 16];
        hex += L"0123456789abcdef"[byte % 16];
    }
    return hex;
}

void FuzzIdentifier(Input& input) {
    const std::string deviceUuid = input.Bytes();
    std::wstring biid = L"before";
    ExpectedCall call(L"GetBiid");
    if (deviceUuid.empty())
        call.Invalid(L"empty deviceUuid");
    API::GetBiid(deviceUuid, biid);
    call.RequireErrors();
    Require(biid == (deviceUuid.empty() ? L"before" : PlainIdentifier(deviceUuid)),
            "the identifier is the keyed digest of the bytes before the first zero");
}

void FuzzText(Input& input) {
    constexpr const wchar_t* Texts[] = {L"unknown",
                                        L"already_on_network",
                                        L"auto_wireless_connect",
                                        L"ethernet",
                                        L"frontpanel_setup_of_wireless",
                                        L"later",
                                        L"press_wireless_button",
                                        L"usb",
                                        L"usb_plus_wifi",
                                        L"usb_setup_of_wireless",
                                        L"usb_to_wifi",
                                        L"wifi_direct"};
    const auto number = static_cast<std::int32_t>(input.Number());
    std::wstring text = L"before";
    API::ToString(static_cast<API::ConnectionMethodType>(number), text);
    const bool isDefined = number >= 0 && number < static_cast<std::int32_t>(std::size(Texts));
    Require(text == (isDefined ? Texts[number]
                               : L"[Undefined ConnectionMethodType value: " + std::to_wstring(number) + L"]"),
            "each method has its text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    NewMachine();
    switch (input.Choice(3)) {
    case 0:
        FuzzPrinters(input);
        break;
    case 1:
        FuzzIdentifier(input);
        break;
    default:
        FuzzText(input);
    }
    return 0;
}
