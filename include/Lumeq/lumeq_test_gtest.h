// GoogleTest matchers over lumeq_test.h.
//
//     using namespace lumeq_test;
//     EXPECT_THAT(Events(), Contains(ButtonClicked("Home", "ok").With("mode", "dark")));
//     EXPECT_THAT(Refusals(), IsEmpty());
//
// A matcher compares the arguments that it names, as they were passed, and no others. Its names and values
// are those of lumeq_test.h; a value may also be a wide text, a number, a flag, an enumerated value or
// nullptr.
#ifndef LUMEQ_LUMEQ_TEST_GTEST_H
#define LUMEQ_LUMEQ_TEST_GTEST_H

#include <Lumeq/lumeq_test.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace lumeq_test {

/// An event, an operation or a refusal. It stays as it is after a reset.
struct Recorded {
    std::string json;
};

inline void PrintTo(const Recorded& recorded, std::ostream* stream) {
    *stream << lumeq_test_text(recorded.json.c_str());
}

inline std::vector<Recorded> ListOf(std::int32_t (*count)(), const char* (*text)(std::int32_t)) {
    std::vector<Recorded> list;
    for (std::int32_t number = 0; number < count(); ++number)
        list.push_back({text(number)});
    return list;
}

inline std::vector<Recorded> Events() { return ListOf(lumeq_test_event_count, lumeq_test_event); }
inline std::vector<Recorded> Operations() { return ListOf(lumeq_test_operation_count, lumeq_test_operation); }
inline std::vector<Recorded> Refusals() { return ListOf(lumeq_test_refusal_count, lumeq_test_refusal); }

/// Resets the double before each test.
class Test : public ::testing::Test {
protected:
    Test() { lumeq_test_reset(); }
};

inline std::string ToValue(const std::string& text) { return text; }
inline std::string ToValue(const char* text) { return text; }
inline std::string ToValue(bool flag) { return flag ? "true" : "false"; }
inline std::string ToValue(const std::wstring& text) {
    std::string utf8;
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::uint32_t code = static_cast<std::uint16_t>(text[at]);
        if (code >= 0xD800 && code < 0xDC00 && at + 1 < text.size())
            code = 0x10000 + ((code - 0xD800) << 10) + (static_cast<std::uint16_t>(text[++at]) - 0xDC00u);
        const int more = code < 0x80 ? 0 : code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
        utf8 += static_cast<char>(more == 0 ? code : (0xF0u << (3 - more) & 0xFFu) | code >> 6 * more);
        for (int left = more - 1; left >= 0; --left)
            utf8 += static_cast<char>(0x80u | (code >> 6 * left & 0x3Fu));
    }
    return utf8;
}
inline std::string ToValue(const wchar_t* text) { return ToValue(std::wstring(text)); }
template <class Number>
typename std::enable_if<std::is_integral<Number>::value || std::is_enum<Number>::value, std::string>::type
ToValue(Number number) {
    return std::to_string(static_cast<std::int64_t>(number));
}

/// Matches what comes from a call of one export.
class CallMatcher {
public:
    using is_gtest_matcher = void;

    explicit CallMatcher(std::string exportName) : _export(std::move(exportName)) {}

    /// Asks for this value as well.
    template <class Value>
    CallMatcher With(const std::string& name, const Value& value) const {
        return With(name, std::make_shared<const std::string>(ToValue(value)));
    }
    /// Asks for an argument that is null or left out.
    CallMatcher With(const std::string& name, std::nullptr_t) const {
        return With(name, std::shared_ptr<const std::string>());
    }

    bool MatchAndExplain(const Recorded& recorded, std::ostream* explanation) const {
        const auto arguments = Arguments();
        const char* const mismatch =
            lumeq_test_mismatch(recorded.json.c_str(), _export.c_str(), arguments.data(), arguments.size());
        if (mismatch && explanation)
            *explanation << mismatch;
        return !mismatch;
    }
    void DescribeTo(std::ostream* stream) const {
        *stream << "is " << _export << "(";
        for (std::size_t at = 0; at < _arguments.size(); ++at)
            *stream << (at > 0 ? ", " : "") << _arguments[at].first << ": "
                    << (_arguments[at].second ? '"' + *_arguments[at].second + '"' : "null");
        *stream << ")";
    }
    void DescribeNegationTo(std::ostream* stream) const {
        *stream << "not ";
        DescribeTo(stream);
    }

private:
    CallMatcher With(const std::string& name, std::shared_ptr<const std::string> value) const {
        CallMatcher more = *this;
        more._arguments.emplace_back(name, std::move(value));
        return more;
    }
    std::vector<lumeq_test_argument> Arguments() const {
        std::vector<lumeq_test_argument> arguments;
        for (const auto& argument : _arguments)
            arguments.push_back(
                {argument.first.c_str(), argument.second ? argument.second->c_str() : nullptr});
        return arguments;
    }

    std::string _export;
    std::vector<std::pair<std::string, std::shared_ptr<const std::string>>> _arguments;
};

/// Of any export, by its name in LumeqApi.h.
inline CallMatcher Call(const std::string& exportName) { return CallMatcher(exportName); }

// Events.

template <class Screen>
CallMatcher ScreenDisplayed(const Screen& screen) {
    return Call("ScreenDisplayed").With("screenName", screen);
}
template <class Screen, class Control>
CallMatcher OfControl(const std::string& exportName, const Screen& screen, const Control& control) {
    return Call(exportName).With("screenName", screen).With("controlName", control);
}
template <class Screen, class Control>
CallMatcher ButtonClicked(const Screen& screen, const Control& control) {
    return OfControl("ButtonClicked", screen, control);
}
template <class Screen, class Control>
CallMatcher TileClicked(const Screen& screen, const Control& control) {
    return OfControl("TileClicked", screen, control);
}
template <class Screen, class Control>
CallMatcher HyperlinkClicked(const Screen& screen, const Control& control) {
    return OfControl("HyperlinkClicked", screen, control);
}
template <class Screen, class Control>
CallMatcher CheckboxChanged(const Screen& screen, const Control& control, bool isChecked) {
    return OfControl("CheckboxChanged", screen, control).With("isChecked", isChecked);
}
template <class Screen, class Control>
CallMatcher AdDisplayed(const Screen& screen, const Control& control) {
    return OfControl("AdDisplayed", screen, control);
}
template <class Screen, class Control>
CallMatcher AdClicked(const Screen& screen, const Control& control) {
    return OfControl("AdClicked", screen, control);
}
template <class Screen, class Control>
CallMatcher AdClosed(const Screen& screen, const Control& control) {
    return OfControl("AdClosed", screen, control);
}
/// `url` with its query, as it was passed. "record.app_event_object_label" has it without.
template <class Url>
CallMatcher UrlLaunched(const Url& url) {
    return Call("UrlLaunchedEx").With("url", url);
}
template <class Name>
CallMatcher FormSubmitted(const Name& formName) {
    return Call("FormSubmitted").With("formName", formName);
}
template <class Name>
CallMatcher ReportGenerated(const Name& reportName) {
    return Call("ReportGenerated").With("reportName", reportName);
}
/// One printer of TrackDiscoveredPrintersEx.
template <class Biid>
CallMatcher PrinterTracked(const Biid& biid) {
    return Call("TrackDiscoveredPrintersEx").With("data.dev_biid", biid);
}

// Tasks: `task` is "ScanAcquire", "PrintBasic", "FileSendTo", "DeviceConnect", "DeviceConfig" or
// "SoftwareInstall".

inline CallMatcher TaskInitiated(const std::string& task) { return Call(task + "Initiated"); }
template <class Result>
CallMatcher TaskCompleted(const std::string& task, const Result& taskResult) {
    return Call(task + "Completed").With("taskResult", taskResult);
}

// Operations.

template <class Name>
CallMatcher Started(const Name& appName) {
    return Call("StartupEx").With("appName", appName);
}
inline CallMatcher ShutDown() { return Call("ShutdownEx"); }

// Refusals.

/// `argument` is empty where no argument is to blame.
inline CallMatcher Refused(const std::string& exportName, const std::string& argument) {
    return Call(exportName).With("refusal.argument", argument);
}

} // namespace lumeq_test

#endif
