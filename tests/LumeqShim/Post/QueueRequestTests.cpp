#include "LumeqShim/Post/QueueRequest.h"

#include "support/RuntimeLocale.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace Zuvan::LumeqShim {

using Lumeq::Testing::HostLocales;
using Lumeq::Testing::RuntimeLocale;

TEST(HostFromUrl, IsWhatFollowsTheLastSlash) {
    EXPECT_EQ(HostFromUrl(L"queue.example"), L"queue.example");
    EXPECT_EQ(HostFromUrl(L"https://queue.example"), L"queue.example");
    EXPECT_EQ(HostFromUrl(L"http://queue.example"), L"queue.example");
    EXPECT_EQ(HostFromUrl(L"https://one.example/two.example"), L"two.example");
    EXPECT_EQ(HostFromUrl(L""), L"");
}

TEST(HostFromUrl, PortIsNotParsed) { EXPECT_EQ(HostFromUrl(L"https://a.example:8443"), L"a.example:8443"); }

TEST(HostFromUrl, SlashAtTheEndLeavesNoHost) {
    EXPECT_EQ(HostFromUrl(L"https://queue.example/"), L"");
    EXPECT_EQ(HostFromUrl(L"/"), L"");
}

TEST(IsPrintable, HoldsForPrintableAsciiOnly) {
    for (int unit = 0; unit <= 0xFFFF; ++unit)
        EXPECT_EQ(IsPrintable(static_cast<wchar_t>(unit)), unit >= 0x20 && unit <= 0x7E) << unit;
}

TEST(IsPrintable, TakesTheHostsLocaleUpTo255AndNothingAbove) {
    for (const char* name : HostLocales) {
        const RuntimeLocale locale(name);
        for (int unit = 0; unit < 0x80; ++unit)
            EXPECT_EQ(IsPrintable(static_cast<wchar_t>(unit)), unit >= 0x20 && unit <= 0x7E)
                << name << " " << unit;
        for (int unit = 0x100; unit <= 0xFFFF; ++unit)
            EXPECT_FALSE(IsPrintable(static_cast<wchar_t>(unit))) << name << " " << unit;
    }
    const RuntimeLocale german("German");
    for (const wchar_t unit : L"\u00e4\u00d6\u00df\u00e9\u00a7")
        EXPECT_EQ(IsPrintable(unit), unit != L'\0') << static_cast<int>(unit);
    EXPECT_FALSE(IsPrintable(L'\x81'));
    EXPECT_FALSE(IsPrintable(L'\x8d'));
}

TEST(IsPrintable, TabIsNotInAnyLocale) {
    for (const char* name : HostLocales) {
        const RuntimeLocale locale(name);
        EXPECT_FALSE(IsPrintable(L'\t')) << name;
    }
}

TEST(IsPrintable, DependsOnTheHostsLocaleBetween128And255) {
    EXPECT_FALSE(IsPrintable(L'\u00d2'));
    {
        const RuntimeLocale german("German");
        EXPECT_TRUE(IsPrintable(L'\u00d2'));
    }
    const RuntimeLocale greek("Greek");
    EXPECT_FALSE(IsPrintable(L'\u00d2')) << "no character there in that code page";
}

TEST(ScrubMessage, ReplacesWhatCannotBePrintedBySpaces) {
    std::wstring message = L"a\nb\t\x7f\u00e9\u20ac\xd800~ ";
    ScrubMessage(message, [](std::size_t) {});
    EXPECT_EQ(message, L"a b     ~ ");
}

TEST(ScrubMessage, ReportsEachUnitBeforeReplacingIt) {
    std::wstring message(L"a\0b\n", 4);
    std::vector<std::wstring> reports;
    ScrubMessage(message, [&](std::size_t index) { reports.push_back(std::to_wstring(index) + message); });
    const std::vector<std::wstring> expected = {{L"1a\0b\n", 5}, L"3a b\n"};
    EXPECT_EQ(reports, expected);
}

TEST(ScrubMessage, LeavesPrintableTextAlone) {
    std::wstring message = L"{\"a\":\"~\"}";
    ScrubMessage(message, [](std::size_t index) { ADD_FAILURE() << index; });
    EXPECT_EQ(message, L"{\"a\":\"~\"}");
}

TEST(PathEncoding, KeepsLettersDigitsAndFourSigns) {
    const std::wstring kept = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~";
    EXPECT_EQ(EncodePathPart(kept), kept);
}

TEST(PathEncoding, EncodesEverythingElseInLowerCase) {
    EXPECT_EQ(EncodePathPart(L"a b"), L"a%20b");
    EXPECT_EQ(EncodePathPart(L"/:?#[]@!$&'()*+,;=%\"\\"),
              L"%2f%3a%3f%23%5b%5d%40%21%24%26%27%28%29%2a%2b%2c%3b%3d%25%22%5c");
    EXPECT_EQ(EncodePathPart(L"\x7f\xe9\xff"), L"%7f%e9%ff");
    EXPECT_EQ(EncodePathPart(L""), L"");
}

TEST(PathEncoding, WritesALeadingZero) { EXPECT_EQ(EncodePathPart(L"\n\x01"), L"%0a%01"); }

TEST(PathEncoding, DropsHighByteOfCodeUnit) {
    EXPECT_EQ(EncodePathPart(L"\u0100"), L"%00");
    EXPECT_EQ(EncodePathPart(L"\u0141"), L"%41") << "the low byte alone is a letter";
    EXPECT_EQ(EncodePathPart(L"\u20ac"), L"%ac");
    EXPECT_EQ(EncodePathPart(L"\xd83d\xde00"), L"%3d%00");
}

TEST(PathEncoding, EncodesANulWithinTheText) {
    EXPECT_EQ(EncodePathPart(std::wstring(L"a\0b", 3)), L"a%00b");
}

TEST(PathEncoding, OfAsciiIsTheSameInEveryLocale) {
    for (const char* name : HostLocales) {
        const RuntimeLocale locale(name);
        EXPECT_EQ(EncodePathPart(L"0Ii-._~ /:@[`{\x7f\n"), L"0Ii-._~%20%2f%3a%40%5b%60%7b%7f%0a") << name;
        EXPECT_EQ(EncodePathPart(L"\u0100\u0141\u0130\u20ac"), L"%00%41%30%ac") << name;
    }
}

TEST(PathEncoding, KeepsTheLettersOfTheHostsLocale) {
    const RuntimeLocale german("German");
    EXPECT_EQ(EncodePathPart(L"\u00e9\u00df\u00d7\u00a7\x81"), L"\u00e9\u00df%d7%a7%81");
}

TEST(RequestPath, EncodesBothParts) {
    EXPECT_EQ(RequestPath(L"0123ABCD", L"sys_info_base"),
              L"/projects/0123ABCD/queues/sys_info_base/messages");
    EXPECT_EQ(RequestPath(L"a b", L"\u0100"), L"/projects/a%20b/queues/%00/messages");
    EXPECT_EQ(RequestPath(L"", L""), L"/projects//queues//messages");
}

TEST(EncodeMessage, IsPrefixAndBase64OfUtf8) {
    EXPECT_EQ(EncodeMessage(L"{}"), "=?media_type:application/json.b64?=e30=");
    EXPECT_EQ(EncodeMessage(L"a b"), "=?media_type:application/json.b64?=YSBi");
    EXPECT_EQ(EncodeMessage(L"\u00e9"), "=?media_type:application/json.b64?=w6k=");
}

TEST(EncodeMessage, EmptyMessageLeavesThePrefixAlone) {
    EXPECT_EQ(EncodeMessage(L""), "=?media_type:application/json.b64?=");
}

TEST(EncodeMessage, UnpairedSurrogateCannotBeSent) {
    EXPECT_THROW(EncodeMessage(L"\xd800"), std::range_error);
}

TEST(RequestBody, IsTheEnvelopeOfOneMessage) {
    EXPECT_EQ(RequestBody("=?media_type:application/json.b64?=e30="),
              R"({"messages":[{"body":"=?media_type:application/json.b64?=e30="}]})");
}

TEST(RequestHeaders, AreFiveLinesTheLastTwoWithoutSpace) {
    EXPECT_EQ(RequestHeaders(L"tok123", L"scan/1.2.3.4", 64), L"Content-Type: application/json\r\n"
                                                              L"Accept: application/json\r\n"
                                                              L"Authorization: Bearer tok123\r\n"
                                                              L"User-Agent:scan/1.2.3.4\r\n"
                                                              L"Content-Length:64\r\n");
}

TEST(RequestHeaders, EmptyTokenLeavesNothingAfterBearer) {
    EXPECT_EQ(RequestHeaders(L"", L"a/0.0.0.0", 0), L"Content-Type: application/json\r\n"
                                                    L"Accept: application/json\r\n"
                                                    L"Authorization: Bearer \r\n"
                                                    L"User-Agent:a/0.0.0.0\r\n"
                                                    L"Content-Length:0\r\n");
}

TEST(OnOneLine, ReplacesUnitsWithALineEndInTheirLowByte) {
    EXPECT_EQ(OnOneLine(L"a\r\nb\n"), L"a  b ");
    EXPECT_EQ(OnOneLine(L"a\u010ab\u200dc"), L"a b c");
    EXPECT_EQ(OnOneLine(L"\t \u0a00"), L"\t \u0a00");
}

} // namespace Zuvan::LumeqShim
