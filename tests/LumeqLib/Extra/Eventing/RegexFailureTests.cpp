#include "LumeqLib/Extra/Eventing/RegexFailure.h"

#include "Common/Pattern.h"
#include "tests/LumeqLib/Extra/Eventing/EventingSupport.h"

#include <cstring>

namespace Zuvan::Lumeq::Extra::Eventing {

namespace {

/// An engine whose failure reads as a test wants it.
class WordedRegexError : public std::regex_error {
public:
    explicit WordedRegexError(const char* text)
        : std::regex_error(std::regex_constants::error_stack), _text(text) {}
    const char* what() const noexcept override { return _text; }

private:
    const char* _text;
};

} // namespace

TEST(RegexFailure, GivesWhatTheMatchGives) {
    EXPECT_TRUE(MatchOrReport(L"label", L"text", [] { return true; }));
    EXPECT_FALSE(MatchOrReport(L"label", L"text", [] { return false; }));
}

TEST(RegexFailure, BecomesAValidationError) {
    EXPECT_EQ(FullMessageOf<Common::ValidationErrorException>([] {
                  MatchOrReport(L"moniker", L"the text",
                                []() -> bool { throw WordedRegexError("too complex"); });
              }),
              L"Regex exception occurred: too complex\nParameter name: moniker\nActual value was the text.");
}

TEST(RegexFailure, EngineTextIsReadAsUtf8) {
    EXPECT_EQ(FullMessageOf<Common::ValidationErrorException>([] {
                  MatchOrReport(L"label", L"x", []() -> bool { throw WordedRegexError("pr\xC3\xBC"); });
              }),
              L"Regex exception occurred: pr\u00fc\nParameter name: label\nActual value was x.");
}

TEST(RegexFailure, EngineTextThatIsNoUtf8IsReadByteByByte) {
    EXPECT_EQ(FullMessageOf<Common::ValidationErrorException>([] {
                  MatchOrReport(L"label", L"x", []() -> bool {
                      throw WordedRegexError("pr\xFC"
                                             "fen");
                  });
              }),
              L"Regex exception occurred: pr\u00fc"
              L"fen\nParameter name: label\nActual value was x.");
}

TEST(RegexFailure, FailureToCompileCounts) {
    std::wstring engineText;
    try {
        const Common::Pattern malformed(L"(");
    } catch (const std::regex_error& failure) {
        engineText.assign(failure.what(), failure.what() + std::strlen(failure.what()));
    }
    ASSERT_FALSE(engineText.empty());
    EXPECT_EQ(FullMessageOf<Common::ValidationErrorException>([] {
                  MatchOrReport(L"taskResult", L"x", [] { return Common::Pattern(L"(").Matches(L"x"); });
              }),
              L"Regex exception occurred: " + engineText +
                  L"\nParameter name: taskResult\nActual value was x.");
}

TEST(RegexFailure, OtherFailuresPassThrough) {
    EXPECT_THROW(MatchOrReport(L"label", L"x", []() -> bool { throw std::range_error("bad conversion"); }),
                 std::range_error);
}

} // namespace Zuvan::Lumeq::Extra::Eventing
