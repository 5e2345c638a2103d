// What an exported call must do, modelled without the code under test.
#pragma once

#include "fuzz/support/Input.h"
#include "fuzz/support/Model.h"
#include "fuzz/support/PlainPatterns.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Fuzzing {

/// The longest text that the plain engine can handle.
std::wstring ReadText(Input& input);
std::optional<std::wstring> ReadOptionalText(Input& input);

/// An optional text of a host.
const wchar_t* Pointer(const std::optional<std::wstring>& text);

/// The two arguments that every event has.
struct ContextArguments {
    std::optional<Extra::Eventing::StringDictionary> local;
    std::optional<std::wstring> global;

    explicit ContextArguments(Input& input);

    const Extra::Eventing::StringDictionary* Local() const { return local ? &*local : nullptr; }
    const wchar_t* Global() const { return Pointer(global); }

    /// The context record, with the machine's process-wide model name.
    Model::Fields Record() const;
};

/// The ERROR lines of one call, in order.
class ExpectedCall {
public:
    explicit ExpectedCall(const wchar_t* name) : _name(name) {}

    void Required(Kind kind, const wchar_t* argName, const std::wstring& value);
    void Optional(Kind kind, const wchar_t* argName, const std::optional<std::wstring>& value);
    void Invalid(const std::wstring& detail);
    void Exception(const std::wstring& text);

    bool Failed() const { return !_errors.empty(); }

    /// Whether the machine's log contains exactly these ERROR lines.
    void RequireErrors() const;

private:
    void Add(const wchar_t* title, const std::wstring& detail);

    std::wstring _name;
    std::vector<std::wstring> _errors;
};

/// The record of an event; details may be Null.
Model::Fields EventRecord(const wchar_t* actor, const wchar_t* action, const wchar_t* object,
                          const std::wstring& label, Model::Fields context, Model details);

/// The time of an event if the clock shows this.
std::uint64_t EventTime(std::int64_t utcMilliseconds);

} // namespace Zuvan::Lumeq::Fuzzing
