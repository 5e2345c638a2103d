// One call of an export, with its arguments as a line of a session spells them.
#pragma once

#include "samples/host/Json.h"

#include <Lumeq/LumeqApi.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zuvan::Lumeq::Double {

using SampleHost::Json;

Json Spelled(const std::wstring& text);
Json Spelled(const wchar_t* text);
Json Spelled(const std::string& text);
Json Spelled(const char* text);
Json Spelled(const API::StringDictionary& fields);
Json Spelled(const API::StringDictionary* fields);
Json Spelled(const API::ScanFeatureMap& features);
Json Spelled(const API::DiscoveredDeviceList& devices);
/// The name of the task in the variable; null if it holds none.
Json Spelled(const API::TaskHandle* variable);
inline Json Spelled(bool flag) { return flag; }
inline Json Spelled(unsigned char byte) { return byte; }
inline Json Spelled(std::int32_t number) { return number; }
inline Json Spelled(std::size_t number) { return number; }
template <class Enumeration>
requires std::is_enum_v<Enumeration> Json Spelled(Enumeration value) {
    return static_cast<std::int32_t>(value);
}

/// A parameter that the export writes.
template <class Parameter>
inline constexpr bool IsResult =
    std::is_same_v<Parameter, std::wstring&> || std::is_same_v<Parameter, wchar_t*>;

/// The call that its thread makes while this lives. Its end records what the library refused.
class RecordedCall {
public:
    /// `arguments` in the order of the signature; results are null.
    RecordedCall(const char* name, const std::vector<Json>& arguments);
    ~RecordedCall();
    RecordedCall(const RecordedCall&) = delete;
    RecordedCall& operator=(const RecordedCall&) = delete;

    const Json& Line() const { return _line; }
    /// A line at ERROR with which the library reports a failure of this call.
    void Report(const std::wstring& line) { _reports.push_back(line); }
    /// The task that this call has begun.
    void Begun(API::TaskHandle task) const;

    /// The one of the calling thread; null outside of calls.
    static RecordedCall* Current() noexcept;

private:
    Json _line;
    std::vector<std::wstring> _reports;
};

/// JSON; "null" outside of calls.
std::string TextOfCurrentCall();

/// The next task is the first again.
void RestartTaskNames();

/// Null for a result.
template <class Parameter, class Argument>
Json SpelledArgument(const Argument& argument) {
    if constexpr (IsResult<Parameter>)
        return {};
    else
        return Spelled(argument);
}

/// Calls the export and records the call.
template <class Result, class... Parameters>
Result Recorded(const char* name, Result (&function)(Parameters...),
                std::type_identity_t<Parameters>... arguments) {
    RecordedCall call(name, {SpelledArgument<Parameters>(arguments)...});
    if constexpr (std::is_same_v<Result, API::TaskHandle>) {
        const API::TaskHandle task = function(arguments...);
        call.Begun(task);
        return task;
    } else {
        return function(arguments...);
    }
}

} // namespace Zuvan::Lumeq::Double
