#include "Common/Utf.h"

#include "support/FacetUtf.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>

namespace Zuvan::Lumeq::Common {

namespace {

template <class Convert>
void ExpectBadConversion(Convert convert) {
    try {
        convert();
        FAIL() << "converted";
    } catch (const std::range_error& failure) {
        EXPECT_STREQ(failure.what(), "bad conversion");
    }
}

template <class Converted, class Convert>
std::optional<Converted> Result(Convert convert) {
    try {
        return convert();
    } catch (const std::range_error&) {
        return std::nullopt;
    }
}

/// Up to seven units from the edges of UTF-16's ranges, or any at all.
std::wstring RandomText(std::mt19937& random) {
    constexpr wchar_t Edges[] =
        L"\0a\x7F\x80\x7FF\x800\xD7FF\xD800\xDBFF\xDC00\xDFFF\xE000\xFEFF\xFFFD\xFFFE\xFFFF";
    std::wstring text(random() % 8, L'\0');
    for (wchar_t& unit : text)
        unit = random() % 4 != 0 ? Edges[random() % (std::size(Edges) - 1)] : static_cast<wchar_t>(random());
    return text;
}

/// Valid UTF-8 of one to three characters with up to two bytes changed, or up to seven bytes that matter.
std::string RandomBytes(std::mt19937& random) {
    constexpr char Edges[] =
        "\0a\x7F\x80\x8F\x90\x9F\xA0\xBF\xC0\xC1\xC2\xDF\xE0\xED\xEF\xF0\xF4\xF5\xF7\xF8\xFE\xFF";
    const auto edge = [&] { return Edges[random() % (std::size(Edges) - 1)]; };
    std::string bytes = Testing::FacetToUtf8(RandomText(random)).value_or("");
    if (bytes.empty())
        bytes.resize(random() % 8);
    const std::size_t changes = random() % 2 != 0 ? random() % 3 : bytes.size();
    for (std::size_t i = 0; i < changes && !bytes.empty(); ++i)
        bytes[random() % bytes.size()] = random() % 4 != 0 ? edge() : static_cast<char>(random());
    if (random() % 4 == 0 && !bytes.empty())
        bytes.pop_back();
    return bytes;
}

constexpr int ComparedTexts = 250'000;

} // namespace

TEST(ToUtf8, ConvertsEveryLength) {
    EXPECT_EQ(ToUtf8(L""), "");
    EXPECT_EQ(ToUtf8(L"a"), "a");
    EXPECT_EQ(ToUtf8(L"\u00e9"), "\xC3\xA9");
    EXPECT_EQ(ToUtf8(L"\u6f22"), "\xE6\xBC\xA2");
    EXPECT_EQ(ToUtf8(L"\xD83D\xDE00"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf8(std::wstring(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(ToUtf8, WritesNoByteOrderMark) { EXPECT_EQ(ToUtf8(L"ab"), "ab"); }

TEST(ToUtf8, RefusesUnpairedSurrogatesAnywhere) {
    for (const wchar_t* text : {L"\xD800", L"a\xD800",
                                L"\xD800"
                                L"a",
                                L"\xDC00", L"\xDC00\xD800", L"\xD800\xD800"})
        ExpectBadConversion([text] { ToUtf8(text); });
}

TEST(ToUtf8, ConvertsEveryUnitAsTheFacetDoes) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) {
        const std::wstring text(1, static_cast<wchar_t>(unit));
        ASSERT_EQ(Result<std::string>([&] { return ToUtf8(text); }), Testing::FacetToUtf8(text)) << unit;
    }
}

TEST(ToUtf8, AgreesWithTheFacetOnRandomTexts) {
    std::mt19937 random(1);
    int refused = 0;
    for (int i = 0; i < ComparedTexts; ++i) {
        const std::wstring text = RandomText(random);
        const auto expected = Testing::FacetToUtf8(text);
        ASSERT_EQ(Result<std::string>([&] { return ToUtf8(text); }), expected)
            << testing::PrintToString(text);
        refused += expected ? 0 : 1;
    }
    EXPECT_GT(refused, ComparedTexts / 10);
    EXPECT_LT(refused, ComparedTexts * 9 / 10);
}

TEST(FromUtf8, AgreesWithTheFacetOnRandomBytes) {
    std::mt19937 random(2);
    int refused = 0;
    for (int i = 0; i < ComparedTexts; ++i) {
        const std::string bytes = RandomBytes(random);
        const auto expected = Testing::FacetFromUtf8(bytes);
        ASSERT_EQ(Result<std::wstring>([&] { return FromUtf8(bytes); }), expected)
            << testing::PrintToString(bytes);
        refused += expected ? 0 : 1;
    }
    EXPECT_GT(refused, ComparedTexts / 10);
    EXPECT_LT(refused, ComparedTexts * 9 / 10);
}

/// Every lead byte with every second byte near the range of those that continue a sequence.
TEST(FromUtf8, AgreesWithTheFacetOnEverySequence) {
    for (unsigned lead = 0xC0; lead <= 0xFF; ++lead)
        for (unsigned second = 0x70; second <= 0xC7; ++second)
            for (const char third : {'\x7F', '\x80', '\xBF', '\xC0'})
                for (const std::size_t length : {2, 3, 4}) {
                    const std::string bytes =
                        std::string{static_cast<char>(lead), static_cast<char>(second), third, '\x80'}.substr(
                            0, length);
                    ASSERT_EQ(Result<std::wstring>([&] { return FromUtf8(bytes); }),
                              Testing::FacetFromUtf8(bytes))
                        << testing::PrintToString(bytes);
                }
}

TEST(FromUtf8, ConvertsEveryLength) {
    EXPECT_EQ(FromUtf8(""), L"");
    EXPECT_EQ(FromUtf8("a"), L"a");
    EXPECT_EQ(FromUtf8("\xC3\xA9"), L"\u00e9");
    EXPECT_EQ(FromUtf8("\xE6\xBC\xA2"), L"\u6f22");
    EXPECT_EQ(FromUtf8("\xF0\x9F\x98\x80"), L"\xD83D\xDE00");
    EXPECT_EQ(FromUtf8(std::string("a\0b", 3)), std::wstring(L"a\0b", 3));
}

TEST(FromUtf8, RefusesWhatIsNotWholeUtf8) {
    for (const char* text :
         {"\xE6\xBC", "a\xC3", "\x80", "\xFF", "\xC0\x80", "\xF5\x80\x80\x80", "\xF0\x9F\x98"})
        ExpectBadConversion([text] { FromUtf8(text); });
}

TEST(FromUtf8, RefusesEncodedSurrogate) {
    ExpectBadConversion([] { FromUtf8("\xED\xA0\x80"); });
    ExpectBadConversion([] { FromUtf8("a\xED\xB0\x80z"); });
}

TEST(FromUtf8, RefusesAPairOfEncodedSurrogates) {
    ExpectBadConversion([] { FromUtf8("\xED\xA0\xBD\xED\xB8\x80"); });
    EXPECT_EQ(FromUtf8("\xED\x9F\xBF\xEE\x80\x80"), L"\xD7FF\xE000") << "their neighbours are characters";
}

TEST(ToUtf8Lossy, UnpairedSurrogateCostsOnlyItself) {
    EXPECT_EQ(ToUtf8Lossy(L"a\xD800z"), "a\xEF\xBF\xBDz");
    EXPECT_EQ(ToUtf8Lossy(L"\xDC00\xD83D\xDE00"), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
    EXPECT_EQ(ToUtf8Lossy(L"z\xD800"), "z\xEF\xBF\xBD");
}

TEST(WidenLossy, TakesUtf8OrElseBytes) {
    EXPECT_EQ(WidenLossy("caf\xC3\xA9"), L"caf\u00e9");
    EXPECT_EQ(WidenLossy("caf\xE9"), L"caf\u00e9");
    EXPECT_EQ(WidenLossy("\xED\xA0\xBD\xED\xB8\x80"), L"\u00ed\u00a0\u00bd\u00ed\u00b8\u0080");
}

} // namespace Zuvan::Lumeq::Common
