#include "Common/Utf.h"

#include <gtest/gtest.h>

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
