// Every pattern of the schema, through the product's engine, compared with a plain engine.
#include "Common/Exceptions.h"
#include "LumeqLib/Extra/Eventing/EventingTask.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "LumeqLib/Extra/Eventing/TaskDetails.h"
#include "fuzz/support/ExportPatterns.h"
#include "fuzz/support/Input.h"
#include "fuzz/support/PlainPatterns.h"
#include "fuzz/support/Require.h"

#include <algorithm>
#include <iterator>

using namespace Zuvan::Lumeq;
using namespace Zuvan::Lumeq::Fuzzing;
using namespace Zuvan::Lumeq::Extra::Eventing;

namespace {

bool ClassTakesTaskResult(const std::wstring& result) {
    const PrintBasicTask task(Dictionary{});
    return !Thrown<Common::ArgumentException>([&] { task.Completed(result, nullptr); });
}

bool ClassTakesInstallVersion(const std::wstring& version) {
    return !Thrown<Common::ArgumentException>(
        [&] { SwInstallTaskDetails(InstallType{1}, L"name", version); });
}

bool ProductMatches(Kind kind, const std::wstring& text) {
    switch (kind) {
    case Kind::HyperlinkLabel:
        return IsValidHyperlinkLabel(text);
    case Kind::UrlLabel:
        return IsValidUrl(text);
    case Kind::ReportMoniker:
        return IsValidReportMoniker(text);
    case Kind::FormMoniker:
        return IsValidFormMoniker(text);
    case Kind::ClassTaskResult:
        return ClassTakesTaskResult(text);
    case Kind::ClassInstallVersion:
        return ClassTakesInstallVersion(text);
    default:
        return ExportPatterns[static_cast<std::size_t>(kind)]->Matches(text);
    }
}

enum class Answer { Refused, Accepted, CannotConvert };

template <class Match>
Answer AnswerOf(Match match) {
    bool accepted = false;
    if (Thrown<std::range_error>([&] { accepted = match(); }))
        return Answer::CannotConvert;
    return accepted ? Answer::Accepted : Answer::Refused;
}

// libFuzzer keeps an input that sets a counter for the first time, so there is one for each kind, answer and
// length.
__attribute__((section("__libfuzzer_extra_counters"))) std::uint8_t seen[KindCount][3][16];

void CheckText(Kind kind, const std::wstring& text) {
    const Answer answer = AnswerOf([&] { return ProductMatches(kind, text); });
    if (text.size() <= LongestPlainText(kind))
        Require(answer == AnswerOf([&] { return PlainlyMatches(kind, text); }),
                "the pattern accepts what the plain engine accepts");
    if (IsName(kind))
        Require(answer == AnswerOf([&] { return ShouldMatch(kind, text); }),
                "a name depends on its ends and its control characters");
    const std::size_t length = std::min<std::size_t>(text.size() / 2, 15);
    seen[static_cast<std::size_t>(kind)][static_cast<std::size_t>(answer)][length] = 1;
}

} // namespace

/// A letter for the pattern, then texts for it, one to a line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    const auto kind = static_cast<Kind>(input.Choice(KindCount));
    do
        CheckText(kind, input.Line());
    while (!input.IsAtEnd());
    return 0;
}
