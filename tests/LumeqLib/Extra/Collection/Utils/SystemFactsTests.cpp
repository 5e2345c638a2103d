#include "LumeqLib/Extra/Collection/Utils/SystemFacts.h"

#include "support/ImportedFunction.h"

#include <comutil.h>
#include <gtest/gtest.h>
#include <initializer_list>
#include <shlobj.h>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

namespace {

/// An array of the element type that starts at the lower bound. `Number` has the size of an element.
template <class Number>
_variant_t ArrayOf(VARTYPE type, std::initializer_list<Number> numbers, LONG lowerBound = 0) {
    _variant_t value;
    value.vt = static_cast<VARTYPE>(VT_ARRAY | type);
    value.parray = SafeArrayCreateVector(type, lowerBound, static_cast<ULONG>(numbers.size()));
    LONG at = lowerBound;
    for (Number number : numbers) {
        SafeArrayPutElement(value.parray, &at, &number);
        ++at;
    }
    return value;
}

} // namespace

TEST(TextIn, IsTheTextOfABstrOnly) {
    EXPECT_EQ(TextIn(_variant_t(L"abc")), L"abc");
    EXPECT_EQ(TextIn(_variant_t(L"")), L"");
    EXPECT_EQ(TextIn(_variant_t()), std::nullopt);
    EXPECT_EQ(TextIn(_variant_t(7L)), std::nullopt);
}

TEST(TextIn, NullBstrIsEmptyText) {
    VARIANT value{};
    value.vt = VT_BSTR;
    EXPECT_EQ(TextIn(value), L"");
}

TEST(LastNumberIn, LastElementWins) {
    EXPECT_EQ(LastNumberIn(ArrayOf<short>(VT_I2, {8, 10})), 10);
    EXPECT_EQ(LastNumberIn(ArrayOf<short>(VT_I2, {10})), 10);
}

TEST(LastNumberIn, CountsFromTheLowerBound) {
    EXPECT_EQ(LastNumberIn(ArrayOf<short>(VT_I2, {8, 10, 3}, 5)), 3);
    EXPECT_EQ(LastNumberIn(ArrayOf<short>(VT_I2, {8, 10}, -1)), 10);
}

TEST(LastNumberIn, EmptyArrayIsZero) { EXPECT_EQ(LastNumberIn(ArrayOf<short>(VT_I2, {})), 0); }

TEST(LastNumberIn, WiderNumbersAreCutToTheirLowBits) {
    EXPECT_EQ(LastNumberIn(ArrayOf<long>(VT_I4, {8, 10})), 10);
    EXPECT_EQ(LastNumberIn(ArrayOf<long>(VT_I4, {0x10009})), 9);
    EXPECT_EQ(LastNumberIn(ArrayOf<long long>(VT_I8, {-1, 12})), 12);
    EXPECT_EQ(LastNumberIn(ArrayOf<unsigned char>(VT_UI1, {200})), 200);
}

TEST(LastNumberIn, ElementsOtherThanNumbersAreNotRead) {
    EXPECT_EQ(LastNumberIn(ArrayOf<VARIANT>(VT_VARIANT, {_variant_t(10L).GetVARIANT()})), 0);
}

TEST(LastNumberIn, FollowsAReference) {
    _variant_t array = ArrayOf<short>(VT_I2, {8, 10});
    SAFEARRAY* referred = array.parray;
    VARIANT reference{};
    reference.vt = VT_ARRAY | VT_BYREF | VT_I2;
    reference.pparray = &referred;
    EXPECT_EQ(LastNumberIn(reference), 10);
}

TEST(LastNumberIn, NoArrayIsNothing) {
    EXPECT_EQ(LastNumberIn(_variant_t()), std::nullopt);
    EXPECT_EQ(LastNumberIn(_variant_t(10L)), std::nullopt);
    EXPECT_EQ(LastNumberIn(_variant_t(L"10")), std::nullopt);
    VARIANT null{};
    null.vt = VT_ARRAY | VT_I2;
    EXPECT_EQ(LastNumberIn(null), std::nullopt);
    null.vt = VT_ARRAY | VT_BYREF | VT_I2;
    EXPECT_EQ(LastNumberIn(null), std::nullopt);
}

TEST(KernelFileVersion, WithoutAFolderOrAFileIsUnknown) {
    EXPECT_EQ(KernelFileVersionIn(std::nullopt), L"unknown");
    EXPECT_EQ(KernelFileVersionIn(L"C:\\no such folder"), L"unknown");
}

TEST(LastNumberIn, ArrayOfSeveralDimensionsIsNothing) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {2, 0}};
    _variant_t value;
    value.vt = VT_ARRAY | VT_I2;
    value.parray = SafeArrayCreate(VT_I2, 2, bounds);
    EXPECT_EQ(LastNumberIn(value), std::nullopt);
}

TEST(LastNumberIn, ElementsOfAnUnknownTypeAreNotRead) {
    const _variant_t array = ArrayOf<short>(VT_I2, {8, 10});
    const Testing::ImportedFunction<decltype(SafeArrayGetVartype)> failing(
        "oleaut32.dll", "SafeArrayGetVartype", [](SAFEARRAY*, VARTYPE*) -> HRESULT { return E_INVALIDARG; });
    EXPECT_EQ(LastNumberIn(array), 0);
}

TEST(LastNumberIn, WithoutEitherBoundIsNothing) {
    const _variant_t array = ArrayOf<short>(VT_I2, {8, 10});
    for (const char* bound : {"SafeArrayGetLBound", "SafeArrayGetUBound"}) {
        const Testing::ImportedFunction<decltype(SafeArrayGetLBound)> failing(
            "oleaut32.dll", bound, [](SAFEARRAY*, UINT, LONG*) -> HRESULT { return E_INVALIDARG; });
        EXPECT_EQ(LastNumberIn(array), std::nullopt) << bound;
    }
    EXPECT_EQ(LastNumberIn(array), 10);
}

TEST(LastNumberIn, ElementThatCannotBeReadLeavesTheOneBefore) {
    const _variant_t array = ArrayOf<short>(VT_I2, {8, 10});
    const Testing::ImportedFunction<decltype(SafeArrayGetElement)> failing(
        "oleaut32.dll", "SafeArrayGetElement", [](SAFEARRAY*, LONG* at, void* element) -> HRESULT {
            if (*at == 1)
                return E_OUTOFMEMORY;
            *static_cast<short*>(element) = 8;
            return S_OK;
        });
    EXPECT_EQ(LastNumberIn(array), 8);
}

TEST(PowerStatus, WithoutAnAnswerIsNothing) {
    const Testing::ImportedFunction<decltype(GetSystemPowerStatus)> failing(
        "kernel32.dll", "GetSystemPowerStatus", [](SYSTEM_POWER_STATUS* status) -> BOOL {
            status->ACLineStatus = 1;
            return FALSE;
        });
    EXPECT_FALSE(ReadPowerStatus().has_value());
}

TEST(SystemFolder, WithoutAnAnswerIsNothing) {
    const Testing::ImportedFunction<decltype(SHGetFolderPathW)> failing(
        "shell32.dll", "SHGetFolderPathW", [](HWND, int, HANDLE, DWORD, wchar_t* path) -> HRESULT {
            path[0] = L'x';
            return E_FAIL;
        });
    EXPECT_EQ(FindSystemFolder(), std::nullopt);
    EXPECT_EQ(GetKernelFileVersion(), L"unknown");
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
