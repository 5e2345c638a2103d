// The argument list of an export: one row for each argument, in the order of the signature, with its name,
// its value and its pattern. The same rows are traced and checked.
//
// A row refers to what the host passed and reads it only inside the frame. It has two members: TraceTo
// appends "label: value" to a line, and IsAccepted reports a bad value. Neither runs any code of its own for
// a good value while the log is off, except the pattern.
#pragma once

#include "Common/Pattern.h"
#include "Common/Text.h"
#include "LumeqApi/Call.h"
#include "LumeqApi/Patterns.h"
#include "LumeqLib/Extra/Eventing/Enumerations.h"

#include <Lumeq/LumeqApi.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace Zuvan::Lumeq::API {

/// The text between quotation marks, or "(null)". Nothing inside is escaped.
std::wstring QuoteArg(const wchar_t* text);
std::wstring QuoteArg(std::wstring_view text);

/// The number of entries, as "[2 item(s)]", or "(null)".
std::wstring CountArg(const StringDictionary* dictionary);
template <class Container>
std::wstring CountArg(const Container& container) {
    return L"[" + Common::DecimalText(container.size()) + L" item(s)]";
}

/// How each type of argument looks in the log.
inline std::wstring Render(const wchar_t* text) { return QuoteArg(text); }
inline std::wstring Render(const std::wstring& text) { return QuoteArg(text); }
inline std::wstring Render(const StringDictionary* dictionary) { return CountArg(dictionary); }
inline std::wstring Render(const StringDictionary& dictionary) { return CountArg(dictionary); }
inline std::wstring Render(const ScanFeatureMap& features) { return CountArg(features); }
inline std::wstring Render(const DiscoveredDeviceList& devices) { return CountArg(devices); }
inline std::wstring Render(bool flag) { return flag ? L"1" : L"0"; }
inline std::wstring Render(unsigned char byte) { return Common::DecimalText(byte); }
inline std::wstring Render(std::int32_t number) { return Common::DecimalText(number); }
template <class Enumeration>
requires std::is_enum_v<Enumeration> std::wstring Render(Enumeration value) {
    return Extra::Eventing::ApiText(value);
}

/// Appends "label: " and the value between the marks. The value ends at its first zero, as every text in the
/// log does.
void AppendToTrace(std::wstring& line, const wchar_t* label, const std::wstring& rendered,
                   const wchar_t* mark = L"");

/// Reports a value that does not match. Always false. `line`: of the statement that made the row.
bool RefuseArgument(const Call& call, const wchar_t* kind, const wchar_t* name, std::wstring_view value,
                    int line);

/// A row that is not checked.
template <class Value>
struct Traced {
    const wchar_t* label;
    const Value& value;

    void TraceTo(std::wstring& line) const { AppendToTrace(line, label, Render(value)); }
    bool IsAccepted(const Call&) const { return true; }
};
template <class Value>
Traced(const wchar_t*, const Value&) -> Traced<Value>;

/// A row that is not traced, for a value that the host did not pass in this form.
struct Checked {
    const wchar_t* name;
    std::wstring_view value;
    const Common::Pattern& pattern;
    int line = __builtin_LINE();

    void TraceTo(std::wstring&) const {}
    bool IsAccepted(const Call& call) const {
        return pattern.Matches(value) || RefuseArgument(call, L"[REQUIRED]", name, value, line);
    }
};

struct Required {
    const wchar_t* name;
    const std::wstring& value;
    const Common::Pattern& pattern;
    const wchar_t* label = name; ///< The name in the trace.
    const wchar_t* mark = L"";   ///< Encloses the quoted value in the trace.
    int line = __builtin_LINE();

    void TraceTo(std::wstring& line) const { AppendToTrace(line, label, QuoteArg(value), mark); }
    bool IsAccepted(const Call& call) const {
        return pattern.Matches(value) || RefuseArgument(call, L"[REQUIRED]", name, value, line);
    }
};

/// Accepts null. An empty text is matched like any other.
struct Optional {
    const wchar_t* name;
    const wchar_t* value;
    const Common::Pattern& pattern;
    int line = __builtin_LINE();

    void TraceTo(std::wstring& line) const { AppendToTrace(line, name, QuoteArg(value)); }
    bool IsAccepted(const Call& call) const {
        return value == nullptr || pattern.Matches(value) ||
               RefuseArgument(call, L"[optional]", name, value, line);
    }
};

/// A list of rows, which can be a row of a longer list.
template <class... Rows>
class Arguments {
public:
    constexpr explicit Arguments(const Rows&... rows) : _rows(rows...) {}

    void TraceTo(std::wstring& line) const {
        std::apply([&](const auto&... rows) { (rows.TraceTo(line), ...); }, _rows);
    }
    /// Checks every row, so that each bad value is reported.
    bool IsAccepted(const Call& call) const {
        bool accepted = true;
        std::apply([&](const auto&... rows) { ((accepted &= rows.IsAccepted(call)), ...); }, _rows);
        return accepted;
    }

private:
    std::tuple<Rows...> _rows;
};

/// The last two arguments of every export that begins an event.
struct ContextArguments {
    const StringDictionary* localContext;
    const wchar_t* globalContext;

    auto Rows() const {
        return Arguments{Traced{L"localContext", localContext},
                         Optional{L"globalContext", globalContext, contextPattern}};
    }
};

/// Logs one line. Renders nothing if it would be dropped.
template <class Row>
void Trace(const Call& call, const Row& row) {
    if (!call.IsTraced())
        return;
    std::wstring line;
    row.TraceTo(line);
    call.Log(Common::SeverityLevel::TRACE, L"%s", line.c_str());
}

/// Runs the body if the arguments are accepted, which are traced first. Else the result is value-initialised.
template <class... Rows, class Body>
auto RunExport(ExportName name, const Arguments<Rows...>& arguments, Body body) {
    using Result = std::invoke_result_t<Body, const Call&>;
    return RunExport(name, [&](const Call& call) -> Result {
        Trace(call, arguments);
        return arguments.IsAccepted(call) ? body(call) : Result();
    });
}

} // namespace Zuvan::Lumeq::API
