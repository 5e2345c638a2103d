#include "bench/PatternCosts.h"

#include "Common/PatternParser.h"
#include "LumeqApi/Patterns.h"
#include "bench/Measure.h"

#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace LumeqBench {

namespace {

using Zuvan::Lumeq::Common::LetterCase;
using Zuvan::Lumeq::Common::Pattern;
namespace API = Zuvan::Lumeq::API;

struct PatternCost {
    const char* name;
    const Pattern& pattern;
    const wchar_t* text; ///< The same pattern for std::wregex.
    LetterCase letterCase;
    std::wstring usual;
    std::wstring start; ///< Start of the long texts; `unit` is appended up to their length.
    std::wstring unit = L"ab";
};

constexpr wchar_t AppName[] = LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)$)";
constexpr wchar_t AdText[] = LR"(^([^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*)?$)";
constexpr wchar_t PaperSize[] = LR"(^[^\x00-\x20\x80-\x9f]+([^\x00-\x1f\x80-\x9f]+[^\x00-\x20\x80-\x9f])*$)";
constexpr wchar_t Subpath[] =
    LR"(^(\\?[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+(\\[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+)*\\?)$)";
constexpr auto Matters = LetterCase::Matters;
constexpr auto Ignored = LetterCase::Ignored;

const PatternCost Costs[] = {
    {"appName", API::appNamePattern, AppName, Ignored, L"Scan Station", L""},
    {"biid", API::biidPattern, L"^(unknown|[a-f0-9]{64})$", Matters,
     L"0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef", L""},
    {"adName", API::adNamePattern, AdText, Ignored, L"Spring", L""},
    {"adProduct", API::adProductPattern, AdText, Ignored, L"Ink at your door", L""},
    {"adVariant", API::adVariantPattern, AdText, Ignored, L"banner 2", L""},
    {"codeName", API::codeNamePattern, L"^[a-z]+$", Matters, L"tarvik", L""},
    {"controlName", API::controlNamePattern, LR"(^[a-z0-9]([-\w]*[a-z0-9])?$)", Ignored, L"connect", L""},
    {"context", API::contextPattern, LR"(^[^\x00-\x1f\x80-\x9f]{1,128}$)", Ignored, L"Tarvik 3000", L""},
    {"flow", API::flowPattern, LR"(^([a-z0-9](\w*[a-z0-9])?)?$)", Ignored, L"setup", L""},
    {"formName", API::formNamePattern, L"^[a-z]+(_[a-z]+)?$", Matters, L"register", L""},
    {"installName", API::installNamePattern, LR"(^[^\x00-\x1f"*/:<>?\\|\x7f-\x9f]+$)", Ignored,
     L"scan-station.msi", L""},
    {"installVersion", API::installVersionPattern, LR"(^[0-9]+\.[0-9]+\.[0-9]+(\.[0-9]+)?$)", Matters,
     L"2.14.0", L"1.2.", L"34"},
    {"subpath", API::subpathPattern, Subpath, Matters, LR"(Devron\Scan Station)", L"", L"a\\"},
    {"mode", API::modePattern, L"^([a-z0-9]+)((_[a-z0-9]+)?)*$", Ignored, L"first_run", L""},
    {"orgName", API::orgNamePattern, L"^[a-z]+$", Matters, L"dvrn", L""},
    {"paperSize", API::paperSizePattern, PaperSize, Ignored, L"4x6 in", L""},
    {"reportName", API::reportNamePattern, L"^[a-z]+(_[a-z]+)?$", Matters, L"setup", L""},
    {"screenName", API::screenNamePattern, LR"(^[a-z0-9](\w*[a-z0-9])?$)", Ignored, L"ChooseNetwork", L""},
    {"screenPath", API::screenPathPattern, LR"(^([a-z0-9]\w*(/[a-z0-9]\w*)*)?$)", Ignored,
     L"network/wireless", L"ab", L"/a"},
    {"taskResult", API::taskResultPattern, LR"(^(success|unknown|error(_(\d+|[a-zA-Z][a-zA-Z0-9]*))?)$)",
     Matters, L"success", L"error_"},
    {"url", API::urlPattern, LR"(^(file|https?)://[^/]+(/[^\s?]*)?$)", Ignored,
     L"https://support.example/printers/setup", L"https://a/"},
    {"schemaVersion", API::schemaVersionPattern, LR"(^\d+\.\d+$)", Ignored, L"1.0", L"1.", L"23"},
};

std::wregex PlainRegex(const PatternCost& cost) {
    auto options = std::regex_constants::ECMAScript;
    if (cost.letterCase == Ignored)
        options |= std::regex_constants::icase;
    return std::wregex(cost.text, options);
}

std::wstring LongText(const PatternCost& cost, std::size_t length) {
    std::wstring text = cost.start;
    while (text.size() < length)
        text += cost.unit;
    text.resize(length);
    return text;
}

void MeasureUsual(const PatternCost& cost) {
    const std::wregex plain = PlainRegex(cost);
    if (!cost.pattern.Matches(cost.usual) || !std::regex_match(cost.usual, plain))
        throw std::logic_error(std::string(cost.name) + " refuses its usual text");
    const std::vector<double> microseconds = MicrosecondsPerCall(
        {[&] { cost.pattern.Matches(cost.usual); }, [&] { std::regex_match(cost.usual, plain); }});
    Report(cost.name, "usual", microseconds[0]);
    Report(cost.name, "plain", microseconds[1]);
}

void MeasureGrowth(const PatternCost& cost) {
    const std::size_t lengths[] = {1'000, 10'000, 100'000};
    std::vector<Action> actions;
    for (const std::size_t length : lengths)
        actions.push_back([&cost, text = LongText(cost, length)] { cost.pattern.Matches(text); });
    const std::vector<double> microseconds = MicrosecondsPerCall(actions);
    for (std::size_t i = 0; i < actions.size(); ++i)
        Report(cost.name, std::to_string(lengths[i]).c_str(), microseconds[i]);
}

} // namespace

void MeasurePatterns() {
    for (const PatternCost& cost : Costs) {
        MeasureUsual(cost);
        MeasureGrowth(cost);
    }
}

} // namespace LumeqBench
