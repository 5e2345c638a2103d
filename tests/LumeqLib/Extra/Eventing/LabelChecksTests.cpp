#include "LumeqLib/Extra/Eventing/LabelChecks.h"

#include "support/RuntimeLocale.h"
#include "support/SmallStack.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <locale>
#include <stdexcept>
#include <vector>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

using Check = bool (*)(const std::wstring&);

void ExpectAccepted(Check check, const std::vector<std::wstring>& texts) {
    for (const std::wstring& text : texts)
        EXPECT_TRUE(check(text)) << testing::PrintToString(text);
}

void ExpectRefused(Check check, const std::vector<std::wstring>& texts) {
    for (const std::wstring& text : texts)
        EXPECT_FALSE(check(text)) << testing::PrintToString(text);
}

std::wstring Repeat(const std::wstring& text, std::size_t times) {
    std::wstring repeated;
    for (std::size_t i = 0; i < times; ++i)
        repeated += text;
    return repeated;
}

constexpr std::size_t HundredThousand = 100000;

} // namespace

TEST(WhiteSpaceCheck, EmptyTextIsNone) { EXPECT_FALSE(IsWhiteSpace(L"")); }

TEST(WhiteSpaceCheck, NeedsEveryCharacter) {
    EXPECT_TRUE(IsWhiteSpace(L" "));
    EXPECT_TRUE(IsWhiteSpace(L" \t\r\n\v\f"));
    EXPECT_FALSE(IsWhiteSpace(L" x "));
    EXPECT_FALSE(IsWhiteSpace(L"  0"));
}

TEST(WhiteSpaceCheck, KnowsTheSpacesBeyondAscii) { EXPECT_TRUE(IsWhiteSpace(L"\u00a0\u2003\u3000")); }

TEST(WhiteSpaceCheck, AgreesWithTheClassicLocaleOnEveryUnit) {
    for (unsigned number = 1; number <= 0xFFFF; ++number) {
        const wchar_t text[] = {static_cast<wchar_t>(number), L'\0'};
        ASSERT_EQ(IsWhiteSpace(text), std::isspace(text[0], std::locale::classic())) << number;
    }
}

TEST(UrlCheck, TakesThreeSchemesAndAnythingBehind) {
    ExpectAccepted(IsValidUrl, {L"http://a", L"https://example.test/a/b#c", L"file:///C:/a b.txt",
                                L"https://user@host:8080/;:,&=", L"http:// "});
}

TEST(UrlCheck, RefusesWhatIsNoUrl) {
    ExpectRefused(IsValidUrl, {L"", L"http://", L"HTTP://a", L"ftp://a", L"http:/a", L"xhttp://a",
                               L"httpss://a", L" http://a", L"file:/a"});
}

TEST(UrlCheck, DoesNotFollowTheHostsLocale) {
    for (const char* name : Testing::HostLocales) {
        SCOPED_TRACE(name);
        const Testing::RuntimeLocale locale(name);
        ExpectAccepted(IsValidUrl,
                       {L"https://a", L"file:///C:/\u00e9\u0436\u6f22\xd83d\xde00.txt", L"http://\u0130"});
        ExpectRefused(IsValidUrl, {L"http://\u6f22?", L"FILE://a", L"f\u0130le://a", L"http:/a"});
    }
}

TEST(UrlCheck, RefusesAQueryString) {
    ExpectRefused(IsValidUrl, {L"https://a/b?c=d", L"http://?", L"http://a?"});
}

TEST(UrlCheck, SeesCharactersBeyondAsciiByTheirUtf8Bytes) {
    ExpectAccepted(IsValidUrl,
                   {L"https://b\u00fccher.test/\u4e2d\u6587", L"http://\u00ff", L"http://\xD83D\xDE00"});
}

TEST(UrlCheck, TakesLineBreaks) {
    ExpectAccepted(IsValidUrl, {L"http://a\nb", L"http://a\r", L"http://\x2028"});
}

TEST(UrlCheck, UnpairedSurrogateHasNoUtf8) {
    try {
        IsValidUrl(L"http://\xD800");
        ADD_FAILURE();
    } catch (const std::range_error& failure) {
        EXPECT_STREQ(failure.what(), "bad conversion");
    }
}

TEST(HyperlinkLabelCheck, TakesFlowPathScreenModeAndControl) {
    ExpectAccepted(IsValidHyperlinkLabel,
                   {L"/main.flow/a/b/Screen-edit#url_privacy-link", L"/Screen#url_privacy", L"/S#url_p",
                    L"/a/b/c/d#url_x", L"/f.flow/S#url_x", L"/f_1.flow/p_2/S_3-m4#url_c-_5", L"/0#url_0",
                    L"/S-Mode0#url_a--b"});
}

TEST(HyperlinkLabelCheck, RefusesWhatIsNoHyperlink) {
    ExpectRefused(IsValidHyperlinkLabel, {L"",
                                          L"/Screen#privacy",
                                          L"/Screen",
                                          L"Screen#url_a",
                                          L"/Screen#url_",
                                          L"/#url_a",
                                          L"//Screen#url_a",
                                          L"/_S#url_a",
                                          L"/S_#url_a",
                                          L"/S-#url_a",
                                          L"/S-a_b#url_a",
                                          L"/S-a-b#url_a",
                                          L"/S#url_-a",
                                          L"/S#url_a-",
                                          L"/S#url_a_",
                                          L"/S#url_a b",
                                          L"/main.flow#url_a",
                                          L"/main.flo/S#url_a",
                                          L"/a/f.flow/S#url_a",
                                          L"/S#url_a#url_b",
                                          L"/S#url_a\n",
                                          L"/S.x#url_a",
                                          L"/mainxflow.flow.flow/S#url_a"});
}

TEST(HyperlinkLabelCheck, LettersBeyondAsciiPassOnlyInsideAName) {
    ExpectAccepted(IsValidHyperlinkLabel, {L"/Scr\u00e9en#url_x", L"/S#url_pr\u00fcfen"});
    ExpectRefused(IsValidHyperlinkLabel, {L"/\u00e9cran#url_x", L"/Caf\u00e9#url_x", L"/S-m\u00e9d#url_x"});
}

TEST(ReportMonikerCheck, TakesOneOrTwoWordsBehindReport) {
    ExpectAccepted(IsValidReportMoniker, {L"x-dvrn_tarvik_report_setup/1.0", L"x-a_b_report_c_d/12.345"});
}

TEST(ReportMonikerCheck, AnyCharacterPassesForTheDotOfTheVersion) {
    ExpectAccepted(IsValidReportMoniker, {L"x-a_b_report_c/1x0", L"x-a_b_report_c/1-0", L"x-a_b_report_c/100",
                                          L"x-a_b_report_c/1\u00e90"});
    ExpectRefused(IsValidReportMoniker,
                  {L"x-a_b_report_c/1\n0", L"x-a_b_report_c/10", L"x-a_b_report_c/1..0"});
}

TEST(ReportMonikerCheck, RefusesWhatIsNoReportMoniker) {
    ExpectRefused(IsValidReportMoniker,
                  {L"", L"x-a_b_form_c/1.0", L"x-a_b_report_/1.0", L"x-a_b_report_c_d_e/1.0",
                   L"x-a_report_c/1.0", L"X-a_b_report_c/1.0", L"x-A_b_report_c/1.0", L"x-a_b_report_c1/1.0",
                   L"x-a_b_report_c-d/1.0", L"x-a_b_report_c/1.", L"x-a_b_report_c/.0", L"x-a_b_report_c",
                   L"x-a_b_report_c/1.0 ", L"y-a_b_report_c/1.0", L"x-a_b_report_c/1.0.0"});
}

TEST(FormMonikerCheck, TakesOneOrTwoWordsBehindForm) {
    ExpectAccepted(IsValidFormMoniker,
                   {L"x-dvrn_tarvik_form_printer/1.0", L"x-a_b_form_printer_information/1.10"});
}

TEST(FormMonikerCheck, RefusesTheExampleOfItsOwnFailureText) {
    ExpectRefused(IsValidFormMoniker, {L"x-dvrn_tarvik_form_printer-information/1.0"});
}

TEST(FormMonikerCheck, AnyCharacterPassesForTheDotOfTheVersion) {
    ExpectAccepted(IsValidFormMoniker, {L"x-a_b_form_c/1x0", L"x-a_b_form_c/1/0"});
    ExpectRefused(IsValidFormMoniker, {L"x-a_b_form_c/1\r0", L"x-a_b_form_c/10"});
}

TEST(FormMonikerCheck, RefusesWhatIsNoFormMoniker) {
    ExpectRefused(IsValidFormMoniker,
                  {L"", L"x-a_b_report_c/1.0", L"x-a_b_form_/1.0", L"x-a_b_form_c_d_e/1.0",
                   L"x-a_b_Form_c/1.0", L"x-a_b_form_c/1.0\n", L"x-a_b_form_c/a.b"});
}

TEST(UrlCheck, SurvivesAHundredThousandCharactersOnASmallStack) {
    bool accepted = false;
    bool refused = true;
    Testing::OnSmallStack([&] {
        accepted = IsValidUrl(L"https://" + std::wstring(HundredThousand, L'a'));
        refused = IsValidUrl(L"https://" + std::wstring(HundredThousand, L'a') + L'?');
    });
    EXPECT_TRUE(accepted);
    EXPECT_FALSE(refused);
}

TEST(HyperlinkLabelCheck, SurvivesAHundredThousandCharactersOnASmallStack) {
    bool longControl = false;
    bool manyScreens = false;
    bool refused = true;
    Testing::OnSmallStack([&] {
        longControl = IsValidHyperlinkLabel(L"/S#url_" + std::wstring(HundredThousand, L'a'));
        manyScreens = IsValidHyperlinkLabel(Repeat(L"/a", HundredThousand / 2) + L"#url_a");
        refused = IsValidHyperlinkLabel(L'/' + std::wstring(HundredThousand, L'a'));
    });
    EXPECT_TRUE(longControl);
    EXPECT_TRUE(manyScreens);
    EXPECT_FALSE(refused);
}

TEST(ReportMonikerCheck, SurvivesAHundredThousandCharactersOnASmallStack) {
    bool longName = false;
    bool digitForTheDot = false;
    bool refused = true;
    Testing::OnSmallStack([&] {
        longName = IsValidReportMoniker(L"x-" + std::wstring(HundredThousand, L'a') + L"_b_report_c/1.0");
        digitForTheDot = IsValidReportMoniker(L"x-a_b_report_c/" + std::wstring(HundredThousand, L'1'));
        refused = IsValidReportMoniker(L"x-a_b_report_c/" + std::wstring(HundredThousand, L'1') + L'x');
    });
    EXPECT_TRUE(longName);
    EXPECT_TRUE(digitForTheDot);
    EXPECT_FALSE(refused);
}

TEST(FormMonikerCheck, SurvivesAHundredThousandCharactersOnASmallStack) {
    bool accepted = false;
    bool refused = true;
    Testing::OnSmallStack([&] {
        accepted = IsValidFormMoniker(L"x-a_b_form_c/1." + std::wstring(HundredThousand, L'0'));
        refused = IsValidFormMoniker(L"x-a_b_form_" + std::wstring(HundredThousand, L'c'));
    });
    EXPECT_TRUE(accepted);
    EXPECT_FALSE(refused);
}

// Each of these takes a backtracking engine years.
TEST(HyperlinkLabelCheck, NestedQuantifiersTakeNoLongerThanOthers) {
    const std::wstring letters(10000, L'a');
    ExpectRefused(IsValidHyperlinkLabel,
                  {L'/' + letters + L'\n', L'/' + letters + L".flow/" + letters + L'\n',
                   Repeat(L"/aaaa", 2000) + L'\n', L"/S#url_" + letters + L'\n', L"/S-" + letters + L'\n',
                   L"/S#url_" + Repeat(L"a-", 5000)});
}

TEST(MonikerChecks, AdjacentQuantifiersTakeNoLongerThanOthers) {
    const std::wstring digits(10000, L'1');
    const std::wstring letters(10000, L'a');
    ExpectRefused(IsValidReportMoniker,
                  {L"x-a_b_report_c/" + digits + L'\n', L"x-a_b_report_" + letters + L'!'});
    ExpectRefused(IsValidFormMoniker, {L"x-a_b_form_c/" + digits + L'\n', L"x-a_b_form_" + letters + L'!'});
    ExpectRefused(IsValidUrl, {L"http://" + letters + L'?'});
}

} // namespace Zuvan::Lumeq::Extra::Eventing
