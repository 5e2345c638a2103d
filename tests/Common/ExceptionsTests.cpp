#include "Common/Exceptions.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace Zuvan::Lumeq::Common {

namespace {

/// Names the classes whose handlers catch an exception of this class.
template <class Exception>
std::string HandlersOf() {
    std::string names;
    const auto add = [&names]<class Base>(const Base*, const char* name) {
        if (std::is_base_of_v<Base, Exception>)
            names += std::string(names.empty() ? "" : " ") + name;
    };
    add(static_cast<std::runtime_error*>(nullptr), "std::runtime_error");
    add(static_cast<VestoException*>(nullptr), "Vesto");
    add(static_cast<ArgumentException*>(nullptr), "Argument");
    add(static_cast<ArgumentOutOfRangeException*>(nullptr), "OutOfRange");
    add(static_cast<ValidationErrorException*>(nullptr), "ValidationError");
    add(static_cast<InvalidOperationException*>(nullptr), "InvalidOperation");
    add(static_cast<ComException*>(nullptr), "Com");
    add(static_cast<FileNotFoundException*>(nullptr), "FileNotFound");
    add(static_cast<FileFormatException*>(nullptr), "FileFormat");
    return names;
}

} // namespace

TEST(Exceptions, AreCaughtAsTheirBasesAndAsNoOthers) {
    EXPECT_EQ(HandlersOf<VestoException>(), "std::runtime_error Vesto");
    EXPECT_EQ(HandlersOf<ArgumentException>(), "std::runtime_error Vesto Argument");
    EXPECT_EQ(HandlersOf<ArgumentOutOfRangeException>(), "std::runtime_error Vesto Argument OutOfRange");
    EXPECT_EQ(HandlersOf<ValidationErrorException>(), "std::runtime_error Vesto Argument ValidationError");
    EXPECT_EQ(HandlersOf<InvalidOperationException>(), "std::runtime_error Vesto InvalidOperation");
    EXPECT_EQ(HandlersOf<ComException>(), "std::runtime_error Vesto Com");
    EXPECT_EQ(HandlersOf<FileNotFoundException>(), "std::runtime_error Vesto FileNotFound");
    EXPECT_EQ(HandlersOf<FileFormatException>(), "std::runtime_error Vesto FileFormat");
}

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
