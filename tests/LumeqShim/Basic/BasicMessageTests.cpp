#include "LumeqShim/Basic/BasicMessage.h"

#include <gtest/gtest.h>

namespace Zuvan::LumeqShim {

TEST(SerializeFlatJson, EmptyDictionaryIsTwoBraces) { EXPECT_EQ(SerializeFlatJson({}), L"{}"); }

TEST(SerializeFlatJson, HasNoSpaces) {
    EXPECT_EQ(SerializeFlatJson({{L"key", L"value"}}), L"{\"key\":\"value\"}");
}

TEST(SerializeFlatJson, EscapesQuotationMarksAndBackslashesInKeysAndValues) {
    EXPECT_EQ(SerializeFlatJson({{L"k\"\\", L"a\"b\\c"}}), LR"({"k\"\\":"a\"b\\c"})");
}

TEST(SerializeFlatJson, EscapesNothingElse) {
    EXPECT_EQ(SerializeFlatJson({{L"/\u00e9", L"\n\t\x01/\u20ac"}}), L"{\"/\u00e9\":\"\n\t\x01/\u20ac\"}");
}

TEST(SerializeFlatJson, SeparatesEntriesByCommasInAnyOrder) {
    const std::wstring text = SerializeFlatJson({{L"a", L"1"}, {L"b", L""}});
    EXPECT_TRUE(text == LR"({"a":"1","b":""})" || text == LR"({"b":"","a":"1"})");
}

TEST(UuidFromGuid, LosesBracesAndCapitals) {
    EXPECT_EQ(UuidFromGuid(L"{3D1219C7-C4C5-404A-AA1F-6D2A48ADFDA4}"),
              L"3d1219c7-c4c5-404a-aa1f-6d2a48adfda4");
}

TEST(UuidFromGuid, OfNothingIsNothing) {
    EXPECT_EQ(UuidFromGuid(L""), L"");
    EXPECT_EQ(UuidFromGuid(L"{"), L"");
    EXPECT_EQ(UuidFromGuid(L"{}"), L"");
}

} // namespace Zuvan::LumeqShim
