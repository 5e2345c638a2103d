#include "LumeqLib/Extra/Collection/Utils/Locale.h"

#include <cwchar>
#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

/// The system's answer for one fact: its size, and whether the text can be read.
struct Fact {
    const wchar_t* text; ///< Null: not even the size is known.
    bool readable = true;
};
Fact country;
Fact language;

LCID asked;

int WINAPI ReadFake(LCID locale, LCTYPE type, LPWSTR buffer, int capacity) {
    asked = locale;
    const Fact& fact = type == LOCALE_SISO3166CTRYNAME ? country : language;
    if (!fact.text)
        return 0;
    const int size = static_cast<int>(std::wcslen(fact.text)) + 1;
    if (capacity == 0)
        return size;
    if (!fact.readable || capacity < size)
        return 0;
    std::wmemcpy(buffer, fact.text, static_cast<std::size_t>(size));
    return size;
}

std::wstring LanguageFrom(Fact theLanguage, Fact theCountry) {
    language = theLanguage;
    country = theCountry;
    return LanguageOf(LOCALE_SYSTEM_DEFAULT, &ReadFake);
}

std::wstring CountryFrom(Fact theCountry) {
    country = theCountry;
    return CountryOf(LOCALE_USER_DEFAULT, &ReadFake);
}

} // namespace

TEST(CountryOf, IsTheCountry) { EXPECT_EQ(CountryFrom({L"US"}), L"US"); }

TEST(CountryOf, QueriesThatLocale) {
    country = language = {L"xx"};
    CountryOf(LOCALE_USER_DEFAULT, &ReadFake);
    EXPECT_EQ(asked, LOCALE_USER_DEFAULT);
    CountryOf(LOCALE_SYSTEM_DEFAULT, &ReadFake);
    EXPECT_EQ(asked, LOCALE_SYSTEM_DEFAULT);
    LanguageOf(LOCALE_USER_DEFAULT, &ReadFake);
    EXPECT_EQ(asked, LOCALE_USER_DEFAULT);
    LanguageOf(LOCALE_SYSTEM_DEFAULT, &ReadFake);
    EXPECT_EQ(asked, LOCALE_SYSTEM_DEFAULT);
}

TEST(CountryOf, IsUnknownWithoutASizeOrAReading) {
    EXPECT_EQ(CountryFrom({nullptr}), L"unknown");
    EXPECT_EQ(CountryFrom({L"US", false}), L"unknown");
}

TEST(LanguageOf, IsLanguageAndCountry) { EXPECT_EQ(LanguageFrom({L"en"}, {L"US"}), L"en-US"); }

TEST(LanguageOf, WithoutACountrysSizeIsUnknown) { EXPECT_EQ(LanguageFrom({L"en"}, {nullptr}), L"unknown"); }

TEST(LanguageOf, WithoutALanguagesSizeIsTheCountryAlone) {
    EXPECT_EQ(LanguageFrom({nullptr}, {L"US"}), L"US");
    EXPECT_EQ(LanguageFrom({nullptr}, {L"US", false}), L"unknown");
}

TEST(LanguageOf, PartThatCannotBeReadIsUnknown) {
    EXPECT_EQ(LanguageFrom({L"en", false}, {L"US"}), L"unknown-US");
    EXPECT_EQ(LanguageFrom({L"en"}, {L"US", false}), L"en-unknown");
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
