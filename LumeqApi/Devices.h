// What the exports do that report printers, identify a device or name a connection method.
#pragma once

#include "LumeqApi/Arguments.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Zuvan::Lumeq::API {

/// Sends each device by itself, or skips it with a line in the log. Throws std::out_of_range at the first
/// device that has information but no `dev_biid`, which ends the list: receivers of a list rely on that.
void PostDiscoveredDevices(const Call& call, const DiscoveredDeviceList& devices);

/// Assigns the identifier to `biid`, which stays as it was after any failure.
void IdentifyDevice(const Call& call, const std::string& deviceUuid, std::wstring& biid);

/// An enumerated argument that is traced as "text (number)".
struct NumberedMethod {
    ConnectionMethodType enumValue;

    void TraceTo(std::wstring& line) const;
    bool IsAccepted(const Call&) const { return true; }
};
void NameMethod(const Call& call, ConnectionMethodType enumValue, std::wstring& textValue);

/// A text that may be null.
inline std::string_view TextOrEmpty(const char* text) { return text ? text : std::string_view(); }

/// wcscpy_s with its results: 0; 22 for a null buffer or a size of 0; 34 for a buffer that is too small,
/// which then holds an empty text. Never calls the runtime's handler for invalid parameters, which is the
/// host's and may end the process. `size` in characters, terminator included.
std::int32_t CopyToBuffer(wchar_t* buffer, std::size_t size, const std::wstring& text) noexcept;

/// The plain form of an export that assigns its result to a string: `assign` takes that string.
template <class Assign>
std::int32_t CopyResult(wchar_t* buffer, std::size_t size, Assign assign) {
    std::wstring result;
    assign(result);
    return CopyToBuffer(buffer, size, result);
}

} // namespace Zuvan::Lumeq::API
