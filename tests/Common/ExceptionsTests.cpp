#include "Common/Exceptions.h"

#include <gtest/gtest.h>

namespace Zuvan::Lumeq::Common {

TEST(Exceptions, VestoExceptionIsItsMessage) {
    const VestoException exception(L"caf\u00e9");
    EXPECT_EQ(exception.FullMessage(), L"caf\u00e9");
    EXPECT_STREQ(exception.what(), "caf\xC3\xA9");
}

TEST(Exceptions, InvalidOperationIsItsMessage) {
    EXPECT_EQ(InvalidOperationException(L"no").FullMessage(), L"no");
}

TEST(Exceptions, ArgumentAddsItsParameter) {
    EXPECT_EQ(ArgumentException(L"mode", L"bad").FullMessage(), L"bad\nParameter name: mode");
}

TEST(Exceptions, ArgumentWithoutParameterIsItsMessage) {
    EXPECT_EQ(ArgumentException(L"", L"bad").FullMessage(), L"bad");
}

TEST(Exceptions, WhatIsTheMessageAlone) {
    const ArgumentException exception(L"mode", L"bad");
    EXPECT_STREQ(static_cast<const std::exception&>(exception).what(), "bad");
}

TEST(Exceptions, OutOfRangeAddsTheActualValue) {
    EXPECT_EQ(ArgumentOutOfRangeException(L"n", L"bad", L"7").FullMessage(),
              L"bad\nParameter name: n\nActual value was 7.");
}

TEST(Exceptions, OutOfRangeWithoutValueIsAnArgumentException) {
    EXPECT_EQ(ArgumentOutOfRangeException(L"n", L"bad", L"").FullMessage(), L"bad\nParameter name: n");
}

TEST(Exceptions, ValidationErrorAddsTheActualValue) {
    EXPECT_EQ(ValidationErrorException(L"n", L"bad", L"7").FullMessage(),
              L"bad\nParameter name: n\nActual value was 7.");
}

TEST(Exceptions, ValidationErrorWithoutValueKeepsTheParameter) {
    EXPECT_EQ(ValidationErrorException(L"n", L"bad", L"").FullMessage(), L"bad\nParameter name: n");
}

TEST(Exceptions, FileExceptionsAddThePath) {
    EXPECT_EQ(FileNotFoundException(L"C:\\a.xml", L"gone").FullMessage(), L"gone\nPath: \"C:\\a.xml\"");
    EXPECT_EQ(FileFormatException(L"C:\\a.xml", L"bad").FullMessage(), L"bad\nPath: \"C:\\a.xml\"");
}

TEST(Exceptions, FileExceptionsAddAnEmptyPathToo) {
    EXPECT_EQ(FileNotFoundException(L"", L"gone").FullMessage(), L"gone\nPath: \"\"");
    EXPECT_EQ(FileFormatException(L"", L"bad").FullMessage(), L"bad\nPath: \"\"");
}

TEST(Exceptions, ComExceptionAddsEightUpperCaseDigits) {
    EXPECT_EQ(ComException(L"bad", 0x1F).FullMessage(), L"bad\nHRESULT: 0x0000001F");
    EXPECT_EQ(ComException(L"bad", static_cast<std::int32_t>(0x8001010e)).FullMessage(),
              L"bad\nHRESULT: 0x8001010E");
}

TEST(Exceptions, CopiesKeepTheirText) {
    try {
        throw FileFormatException(L"p", L"m");
    } catch (const VestoException& caught) {
        EXPECT_EQ(caught.FullMessage(), L"m\nPath: \"p\"");
        const VestoException sliced = caught;
        EXPECT_EQ(sliced.FullMessage(), L"m");
    }
}

TEST(Exceptions, MessageThatIsNoTextCannotBeCarried) {
    try {
        throw VestoException(L"\xD800");
        FAIL() << "carried";
    } catch (const std::range_error& failure) {
        EXPECT_STREQ(failure.what(), "bad conversion");
    }
}

} // namespace Zuvan::Lumeq::Common
