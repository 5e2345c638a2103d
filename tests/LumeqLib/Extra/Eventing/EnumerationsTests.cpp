#include "LumeqLib/Extra/Eventing/Enumerations.h"

#include "Common/Exceptions.h"
#include "tests/LumeqLib/Extra/Eventing/ExpectedEnumerations.h"

#include <algorithm>
#include <climits>
#include <gtest/gtest.h>
#include <iterator>
#include <set>
#include <string>
#include <type_traits>
#include <vector>

namespace Zuvan::Lumeq::API {

namespace {

using Extra::Eventing::ApiText;
using Extra::Eventing::RecordText;
using Extra::Eventing::ToRecord;

using Expected::ExpectedRow;
using Expected::ExpectedTexts;
using Expected::ForEachEnumeration;

std::wstring Undefined(const wchar_t* stem, std::int32_t value) {
    return stem + std::to_wstring(value) + L"]";
}

/// Values outside a table of `size` rows, near both ends and at the limits.
std::vector<std::int32_t> ValuesOutside(std::size_t size) {
    const auto end = static_cast<std::int32_t>(size);
    return {INT_MIN, -2, -1, end, end + 1, end + 2, INT_MAX - 1, INT_MAX};
}

template <class Api>
std::wstring ThrownFor(std::int32_t value) {
    try {
        ToRecord(static_cast<Api>(value));
    } catch (const Common::ArgumentOutOfRangeException& caught) {
        return caught.FullMessage();
    }
    return L"(nothing was thrown)";
}

} // namespace

TEST(Enumerations, AreTwentyThree) {
    std::set<std::string> names;
    ForEachEnumeration([&](const char* name, const auto&, const ExpectedTexts&) { names.insert(name); });
    EXPECT_EQ(names.size(), 23U);
}

TEST(Enumerations, EnumeratorsHaveTheirNumbers) {
    ForEachEnumeration([](const char* name, const auto& rows, const ExpectedTexts&) {
        for (const auto& row : rows)
            EXPECT_EQ(static_cast<std::int32_t>(row.apiEnumerator), row.apiValue) << name;
    });
}

TEST(Enumerations, AreThirtyTwoBitsWide) {
    ForEachEnumeration([]<class Api, class Record, std::size_t N>(
                           const char* name, const ExpectedRow<Api, Record>(&)[N], const ExpectedTexts&) {
        EXPECT_EQ(sizeof(Api), 4U) << name;
        EXPECT_EQ(sizeof(Record), 4U) << name;
    });
}

TEST(Enumerations, ConvertEveryValue) {
    ForEachEnumeration([]<class Api, class Record, std::size_t N>(
                           const char* name, const ExpectedRow<Api, Record>(&rows)[N], const ExpectedTexts&) {
        static_assert(std::is_same_v<decltype(ToRecord(rows[0].apiEnumerator)), Record>);
        for (const auto& row : rows)
            EXPECT_EQ(ToRecord(static_cast<Api>(row.apiValue)), static_cast<Record>(row.recordValue))
                << name << ' ' << row.apiValue;
    });
}

TEST(Enumerations, RefuseEveryValueOutsideTheirTable) {
    ForEachEnumeration([]<class Api, class Record, std::size_t N>(const char* name,
                                                                  const ExpectedRow<Api, Record>(&)[N],
                                                                  const ExpectedTexts& texts) {
        for (const std::int32_t value : ValuesOutside(N))
            EXPECT_EQ(ThrownFor<Api>(value), Undefined(texts.thrownStem, value) + L"\nParameter name: " +
                                                 texts.paramName + L"\nActual value was " +
                                                 std::to_wstring(value) + L".")
                << name;
    });
}

TEST(Enumerations, HaveTheTextOfEveryApiValue) {
    ForEachEnumeration([]<class Api, class Record, std::size_t N>(
                           const char* name, const ExpectedRow<Api, Record>(&rows)[N], const ExpectedTexts&) {
        for (const auto& row : rows)
            EXPECT_EQ(ApiText(static_cast<Api>(row.apiValue)), row.text) << name;
    });
}

TEST(Enumerations, ReportApiValuesOutsideTheirTable) {
    ForEachEnumeration([]<class Api, class Record, std::size_t N>(const char* name,
                                                                  const ExpectedRow<Api, Record>(&)[N],
                                                                  const ExpectedTexts& texts) {
        for (const std::int32_t value : ValuesOutside(N))
            EXPECT_EQ(ApiText(static_cast<Api>(value)), Undefined(texts.apiStem, value)) << name;
    });
}

TEST(Enumerations, HaveTheSameTextAtTheRecordLevel) {
    int withRecordText = 0;
    ForEachEnumeration([&]<class Api, class Record, std::size_t N>(const char* name,
                                                                   const ExpectedRow<Api, Record>(&rows)[N],
                                                                   const ExpectedTexts& texts) {
        if constexpr (std::is_enum_v<Record>) {
            ASSERT_NE(texts.recordStem, nullptr) << name;
            ++withRecordText;
            for (const auto& row : rows)
                EXPECT_EQ(RecordText(static_cast<Record>(row.recordValue)), row.text) << name;
        }
    });
    EXPECT_EQ(withRecordText, 21);
}

TEST(Enumerations, ReportRecordValuesThatBypassedTheConversion) {
    ForEachEnumeration([]<class Api, class Record, std::size_t N>(const char* name,
                                                                  const ExpectedRow<Api, Record>(&rows)[N],
                                                                  const ExpectedTexts& texts) {
        if constexpr (std::is_enum_v<Record>) {
            for (const std::int32_t value : ValuesOutside(N)) {
                ASSERT_TRUE(std::none_of(std::begin(rows), std::end(rows),
                                         [&](const auto& row) { return row.recordValue == value; }));
                EXPECT_EQ(RecordText(static_cast<Record>(value)), Undefined(texts.recordStem, value)) << name;
            }
        }
    });
}

TEST(Enumerations, ThreeRecordTypesServeTwoEnumerationsEach) {
    using Extra::Eventing::MimeType;
    using Extra::Eventing::Shortcut;
    using Extra::Eventing::ShortcutVariance;
    static_assert(std::is_same_v<decltype(ToRecord(File::MimeType::unknown)), MimeType>);
    static_assert(std::is_same_v<decltype(ToRecord(Scan::MimeType::unknown)), MimeType>);
    static_assert(std::is_same_v<decltype(ToRecord(File::ShortcutType::unknown)), Shortcut>);
    static_assert(std::is_same_v<decltype(ToRecord(Scan::ShortcutType::unknown)), Shortcut>);
    static_assert(std::is_same_v<decltype(ToRecord(File::ShortcutVarianceType::unknown)), ShortcutVariance>);
    static_assert(std::is_same_v<decltype(ToRecord(Scan::ShortcutVarianceType::unknown)), ShortcutVariance>);
    EXPECT_EQ(ToRecord(static_cast<File::MimeType>(7)), ToRecord(static_cast<Scan::MimeType>(3)));
    EXPECT_EQ(ApiText(static_cast<File::MimeType>(7)), L"application/rtf");
    EXPECT_EQ(ApiText(static_cast<Scan::MimeType>(3)), L"application/rtf");
}

TEST(Enumerations, ItemTypesOfScanAndPrintShareNothing) {
    static_assert(!std::is_same_v<decltype(ToRecord(Scan::ItemType::unknown)),
                                  decltype(ToRecord(Print::ItemType::unknown))>);
    EXPECT_EQ(ApiText(static_cast<Scan::ItemType>(2)), L"photo");
    EXPECT_EQ(ApiText(static_cast<Print::ItemType>(2)), L"photo/multi");
}

TEST(Enumerations, UnknownOfHowAndWhyHasTheRecordValueOfItsAlphabeticalPlace) {
    EXPECT_EQ(ToRecord(static_cast<HowType>(0)), 9U);
    EXPECT_EQ(ToRecord(static_cast<WhyType>(0)), 4U);
    EXPECT_EQ(ToRecord(static_cast<HowType>(1)), 0U);
    EXPECT_EQ(ToRecord(static_cast<WhyType>(1)), 0U);
}

TEST(Enumerations, UsbKeepsItsTextUnderItsOtherNumber) {
    EXPECT_EQ(ApiText(static_cast<ConnectionMethodType>(7)), L"usb");
    const Extra::Eventing::ConnectionMethod record = ToRecord(static_cast<ConnectionMethodType>(7));
    EXPECT_EQ(static_cast<std::int32_t>(record), 1);
    EXPECT_EQ(RecordText(record), L"usb");
}

TEST(Enumerations, ColorModeHasItsScopeOnlyInTheThrownMessage) {
    EXPECT_EQ(ThrownFor<Scan::ColorModeType>(6),
              L"[Undefined Scan::ColorModeType: 6]\nParameter name: colorModeType\nActual value was 6.");
    EXPECT_EQ(ApiText(static_cast<Scan::ColorModeType>(6)), L"[Undefined ColorModeType value: 6]");
}

TEST(Enumerations, InstallTypeHasOneUndefinedTextAtBothLevels) {
    EXPECT_EQ(ApiText(static_cast<InstallType>(3)), L"[Undefined InstallType value: 3]");
    EXPECT_EQ(RecordText(static_cast<Extra::Eventing::InstallType>(3)), L"[Undefined InstallType value: 3]");
}

TEST(Enumerations, AdTypeIsCalledCampaignTypeAtTheRecordLevel) {
    EXPECT_EQ(ThrownFor<AdType>(5), L"[Undefined AdType: 5]\nParameter name: adType\nActual value was 5.");
    EXPECT_EQ(ApiText(static_cast<AdType>(5)), L"[Undefined AdType value: 5]");
    EXPECT_EQ(RecordText(static_cast<Extra::Eventing::CampaignType>(5)),
              L"[Undefined CampaignType value: 5]");
}

} // namespace Zuvan::Lumeq::API
