#include "lumeq/NearestText.h"

#include "LumeqApi/Patterns.h"
#include "LumeqLib/Extra/Eventing/LabelChecks.h"
#include "lumeq/Explanation.h"
#include "lumeq/LibraryTables.h"

#include <gtest/gtest.h>
#include <random>

namespace Zuvan::Lumeq::Tool {

using namespace API;

TEST(NearestText, RemovesADoubledSeparator) {
    EXPECT_EQ(NearestText(modePattern, L"dark__v2"), L"dark_v2");
    EXPECT_EQ(NearestText(screenPathPattern, L"network//wireless"), L"network/wireless");
}

TEST(NearestText, ChangesTheCase) {
    EXPECT_EQ(NearestText(orgNamePattern, L"DVRN"), L"dvrn");
    EXPECT_EQ(NearestText(Extra::Eventing::urlLabelPattern, L"HTTPS://a/b"), L"https://a/b");
}

TEST(NearestText, ChangesASeparator) {
    EXPECT_EQ(NearestText(screenNamePattern, L"My Screen"), L"My_Screen");
    EXPECT_EQ(NearestText(modePattern, L"dark-v2"), L"dark_v2");
}

TEST(NearestText, RemovesWhatCannotEndIt) {
    EXPECT_EQ(NearestText(controlNamePattern, L"data-"), L"data");
    EXPECT_EQ(NearestText(appNamePattern, L" Scan Studio "), L"Scan Studio");
    EXPECT_EQ(NearestText(contextPattern, std::wstring(129, L'x')), std::wstring(128, L'x'));
}

TEST(NearestText, AppendsWhatIsMissing) {
    EXPECT_EQ(NearestText(installVersionPattern, L"1.2"), L"1.2.0");
    EXPECT_EQ(NearestText(urlPattern, L"ftp://support.example/"), L"http://support.example/");
}

TEST(NearestText, PrefersAnEditWhereThePatternFails) {
    EXPECT_EQ(NearestText(Extra::Eventing::hyperlinkLabelPattern, L"/Home-on_line#url_help"),
              L"/Home-online#url_help");
}

TEST(NearestText, IsTheTextItselfIfThatIsAccepted) { EXPECT_EQ(NearestText(modePattern, L"dark"), L"dark"); }

TEST(NearestText, IsNoneIfNothingOfTheTextWouldBeLeft) {
    EXPECT_EQ(NearestText(modePattern, L""), std::nullopt);
    EXPECT_EQ(NearestText(controlNamePattern, L"-"), std::nullopt);
    EXPECT_EQ(NearestText(taskResultPattern, L"out of paper"), std::nullopt);
    EXPECT_EQ(NearestText(biidPattern, L"0123"), std::nullopt);
    EXPECT_EQ(NearestText(modePattern, std::wstring(513, L'_')), std::nullopt);
}

TEST(NearestText, IsAcceptedForAnyTextAndPattern) {
    std::mt19937 random(20261122);
    const std::wstring alphabet = L"aZ09_-/. :?#\t\u00e9\u2028\xd800";
    int found = 0;
    for (const std::string& name : LibraryPatternNames())
        for (int i = 0; i < 100; ++i) {
            std::wstring text;
            for (auto length = random() % 12; length > 0; --length)
                text += alphabet[random() % alphabet.size()];
            if (const auto nearest = NearestText(LibraryPattern(name), text)) {
                ++found;
                EXPECT_TRUE(LibraryPattern(name).Matches(*nearest)) << name;
            }
        }
    EXPECT_GT(found, 500);
}

TEST(Explanation, PointsAtTheFirstCharacterAfterWhichNothingCouldBeAccepted) {
    EXPECT_EQ(Explain(modePattern, L"dark__v2").at, 5u);
    EXPECT_EQ(Explain(contextPattern, std::wstring(200, L'x')).at, 128u);
    EXPECT_EQ(Explain(urlPattern, L"ftp://a").at, 1u);
    EXPECT_FALSE(Explain(modePattern, L"dark__v2").isAccepted);
    EXPECT_FALSE(Explain(modePattern, L"dark__v2").endsTooEarly);
}

TEST(Explanation, PointsPastATextThatEndsTooEarly) {
    const Explanation explanation = Explain(modePattern, L"dark_");
    EXPECT_TRUE(explanation.endsTooEarly);
    EXPECT_FALSE(explanation.isAccepted);
    EXPECT_EQ(explanation.at, 5u);
    EXPECT_TRUE(Explain(modePattern, L"").endsTooEarly);
}

TEST(Explanation, OfAnAcceptedText) {
    EXPECT_TRUE(Explain(modePattern, L"dark_v2").isAccepted);
    EXPECT_FALSE(Explain(modePattern, L"dark_v2").endsTooEarly);
}

} // namespace Zuvan::Lumeq::Tool
