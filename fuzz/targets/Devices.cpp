// The device exports, one call after another: printers, the device identifier, the text of a connection
// method, and the forms of the last two that fill a buffer.
#include "LumeqLib/Extra/Collection/BiidKey.h"
#include "fuzz/native/Machine.h"
#include "fuzz/support/ExportModel.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainHmac.h"
#include "fuzz/support/Require.h"

#include <Lumeq/LumeqApi.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <vector>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;

namespace {

constexpr wchar_t BiidField[] = L"dev_biid";

void RequireTraces(const std::vector<std::wstring>& lines) {
    Require(TheMachine().Messages(Common::SeverityLevel::TRACE) == lines,
            "a call logs its arguments and its result");
}

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
    API::DiscoveredDeviceList devices(input.Choice(12));
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
    RequireTraces({L"discoveredDeviceList: [" + std::to_wstring(devices.size()) + L" item(s)]"});
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

/// The bytes of a text of ASCII; any other text is not shown alike by every system.
bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

/// After a call of GetBiid with this text.
void RequireIdentifierLines(const std::string& deviceUuid, const ExpectedCall& call) {
    call.RequireErrors();
    if (!IsAscii(deviceUuid))
        return;
    const std::string shown = deviceUuid.c_str();
    std::vector<std::wstring> lines{L"deviceUuid: \"" + std::wstring(shown.begin(), shown.end()) + L"\""};
    if (!deviceUuid.empty())
        lines.push_back(L"...returns biid: \"" + PlainIdentifier(deviceUuid) + L"\"");
    RequireTraces(lines);
}

ExpectedCall IdentifierCall(const std::string& deviceUuid) {
    ExpectedCall call(L"GetBiid");
    if (deviceUuid.empty())
        call.Invalid(L"empty deviceUuid");
    return call;
}

void FuzzIdentifier(Input& input) {
    const std::string deviceUuid = input.Bytes();
    std::wstring biid = L"before";
    const ExpectedCall call = IdentifierCall(deviceUuid);
    API::GetBiid(deviceUuid, biid);
    RequireIdentifierLines(deviceUuid, call);
    Require(biid == (deviceUuid.empty() ? L"before" : PlainIdentifier(deviceUuid)),
            "the identifier is the keyed digest of the bytes before the first zero");
}

/// A buffer of a size that the input chooses, or none, which is passed with a size all the same.
class HostBuffer {
public:
    explicit HostBuffer(Input& input)
        : _isNull(input.Choice(8) == 7), _size(static_cast<std::size_t>(input.Number() & 0x7F)),
          _units(_size, L'?') {}

    wchar_t* Pointer() { return _isNull ? nullptr : _units.data(); }
    std::size_t Size() const { return _size; }

    void RequireCopied(std::int32_t result, const std::wstring& text) const {
        const bool isUsable = !_isNull && _size > 0;
        const bool fits = isUsable && text.size() < _size;
        Require(result == (fits       ? 0
                           : isUsable ? ERANGE
                                      : EINVAL),
                "the result says whether the text was stored");
        std::vector<wchar_t> due(_size, L'?');
        if (fits)
            std::copy(text.begin(), text.end(), due.begin());
        if (isUsable)
            due[fits ? text.size() : 0] = L'\0';
        Require(_units == due, "only the text and its end are written");
    }

private:
    bool _isNull;
    std::size_t _size;
    std::vector<wchar_t> _units;
};

void FuzzIdentifierCopy(Input& input) {
    HostBuffer buffer(input);
    // A narrow text ends at its first zero.
    const std::string deviceUuid = input.Bytes().c_str();
    const ExpectedCall call = IdentifierCall(deviceUuid);
    const std::int32_t result = API::GetBiid_Internal(buffer.Pointer(), buffer.Size(), deviceUuid.c_str());
    RequireIdentifierLines(deviceUuid, call);
    buffer.RequireCopied(result, deviceUuid.empty() ? L"" : PlainIdentifier(deviceUuid));
}

std::wstring PlainMethodText(std::int32_t number) {
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
    const bool isDefined = number >= 0 && number < static_cast<std::int32_t>(std::size(Texts));
    return isDefined ? Texts[number]
                     : L"[Undefined ConnectionMethodType value: " + std::to_wstring(number) + L"]";
}

void RequireMethodLines(std::int32_t number) {
    const std::wstring text = PlainMethodText(number);
    RequireTraces({L"enumValue: " + text + L" (" + std::to_wstring(number) + L")",
                   L"...returns textValue: \"" + text + L"\""});
}

void FuzzText(Input& input) {
    const auto number = static_cast<std::int32_t>(input.Number());
    std::wstring text = L"before";
    API::ToString(static_cast<API::ConnectionMethodType>(number), text);
    Require(text == PlainMethodText(number), "each method has its text");
    RequireMethodLines(number);
}

void FuzzTextCopy(Input& input) {
    HostBuffer buffer(input);
    const auto number = static_cast<std::int32_t>(input.Number());
    const std::int32_t result = API::ToString_Internal(buffer.Pointer(), buffer.Size(),
                                                       static_cast<API::ConnectionMethodType>(number));
    RequireMethodLines(number);
    buffer.RequireCopied(result, PlainMethodText(number));
}

constexpr void (*Calls[])(Input& input) = {FuzzPrinters, FuzzIdentifier, FuzzText, FuzzIdentifierCopy,
                                           FuzzTextCopy};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    // Each call finds what the calls before it left in the library, and a machine of its own.
    do {
        NewMachine();
        Calls[input.Choice(std::size(Calls))](input);
    } while (!input.IsAtEnd());
    return 0;
}
