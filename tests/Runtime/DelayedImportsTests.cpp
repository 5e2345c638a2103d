#include <windows.h>

#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <oaidl.h>
#include <string>

extern "C" IMAGE_DOS_HEADER __ImageBase;
extern "C" FARPROC WINAPI __delayLoadHelper2(const IMAGE_DELAYLOAD_DESCRIPTOR* library, FARPROC* slot);

namespace {

INT_PTR Unresolved() { return 0; }

/// What the linker writes for one delayed function of one library. All of it has to lie in this program.
struct Delayed {
    struct Import {
        WORD hint;
        char name[40];
    } import;
    char library[40];
    HMODULE module;
    FARPROC addresses[2];
    IMAGE_THUNK_DATA names[2];
    IMAGE_DELAYLOAD_DESCRIPTOR descriptor;
};
Delayed delayed;

DWORD OffsetOf(const void* object) {
    return static_cast<DWORD>(reinterpret_cast<std::uintptr_t>(object) -
                              reinterpret_cast<std::uintptr_t>(&__ImageBase));
}

/// The first call of `function`: what it goes to.
FARPROC Resolve(const char* library, const char* function) {
    delayed = {};
    std::strcpy(delayed.library, library);
    std::strcpy(delayed.import.name, function);
    delayed.names[0].u1.AddressOfData = OffsetOf(&delayed.import);
    delayed.addresses[0] = &Unresolved;
    delayed.descriptor.DllNameRVA = OffsetOf(delayed.library);
    delayed.descriptor.ModuleHandleRVA = OffsetOf(&delayed.module);
    delayed.descriptor.ImportAddressTableRVA = OffsetOf(delayed.addresses);
    delayed.descriptor.ImportNameTableRVA = OffsetOf(delayed.names);
    return __delayLoadHelper2(&delayed.descriptor, &delayed.addresses[0]);
}

std::uint64_t CallMissing(const char* function, void* argument = nullptr) {
    const auto target = reinterpret_cast<std::uint64_t (*)(void*)>(
        reinterpret_cast<void*>(Resolve("lumeq-no-such-library.dll", function)));
    return target(argument);
}

constexpr std::uint32_t ModuleNotFound = 126;
constexpr std::uint32_t ModuleNotFoundResult = 0x8007007E;

} // namespace

TEST(DelayedImports, FirstCallFindsTheFunctionAndLaterOnesGoThereDirectly) {
    SetLastError(77);
    const FARPROC function = Resolve("version.dll", "VerQueryValueW");
    EXPECT_EQ(GetLastError(), 77U) << "the caller may still read it";
    const HMODULE version = GetModuleHandleW(L"version.dll");
    ASSERT_NE(version, nullptr);
    EXPECT_EQ(function, GetProcAddress(version, "VerQueryValueW"));
    EXPECT_EQ(delayed.addresses[0], function);
    EXPECT_EQ(delayed.module, version);
}

TEST(DelayedImports, LibraryIsTakenFromTheSystemFolderAlone) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::filesystem::path planted = std::filesystem::path(path).replace_filename("lumeq-planted.dll");
    GetModuleFileNameW(GetModuleHandleW(L"kernel32.dll"), path, MAX_PATH);
    std::filesystem::copy_file(path, planted, std::filesystem::copy_options::overwrite_existing);
    const HMODULE searched = LoadLibraryW(planted.filename().c_str());
    EXPECT_NE(searched, nullptr) << "a search finds it";
    FreeLibrary(searched);

    const FARPROC function = Resolve("lumeq-planted.dll", "GetTickCount");

    EXPECT_EQ(delayed.module, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t (*)()>(reinterpret_cast<void*>(function))(), 0U);
    std::filesystem::remove(planted);
}

TEST(DelayedImports, CallOfAMissingLibraryReturnsAFailureThatItsCallerHandles) {
    EXPECT_EQ(CallMissing("InternetOpenA"), 0U);
    EXPECT_EQ(GetLastError(), ModuleNotFound);
    EXPECT_EQ(CallMissing("SysAllocString"), 0U);
    EXPECT_EQ(CallMissing("StringFromGUID2"), 0U);
    EXPECT_EQ(CallMissing("GetSystemMetrics"), 0U);
    EXPECT_EQ(CallMissing("AllocateAndInitializeSid"), 0U);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("RegOpenKeyExW")), ModuleNotFound);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("SetEntriesInAclW")), ModuleNotFound);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("UuidCreate")), ModuleNotFound);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("SHCreateDirectoryExW")), ModuleNotFound);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("CoInitializeEx")), ModuleNotFoundResult);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("CoCreateInstance")), ModuleNotFoundResult);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("SHGetFolderPathW")), ModuleNotFoundResult);
    EXPECT_EQ(static_cast<std::uint32_t>(CallMissing("ObtainUserAgentString")), ModuleNotFoundResult);
    EXPECT_EQ(CallMissing("PathIsRelativeW"), 1U)
        << "so there is no log, rather than one in the current folder";
}

TEST(DelayedImports, MissingPathFunctionReturnsTheWholePath) {
    wchar_t path[] = L"C:\\Host\\host.exe";
    EXPECT_EQ(CallMissing("PathFindFileNameW", path), reinterpret_cast<std::uintptr_t>(path));
}

TEST(DelayedImports, VariantIsEmptyWithoutItsLibrary) {
    VARIANT variant;
    std::memset(&variant, 0xAA, sizeof variant);
    CallMissing("VariantInit", &variant);
    EXPECT_EQ(variant.vt, VT_EMPTY);
}

TEST(DelayedImports, CallAfterAFailureTriesAgain) {
    Resolve("lumeq-no-such-library.dll", "RegOpenKeyExW");
    EXPECT_EQ(delayed.addresses[0], &Unresolved);
    std::strcpy(delayed.library, "advapi32.dll");
    const FARPROC function = __delayLoadHelper2(&delayed.descriptor, &delayed.addresses[0]);
    EXPECT_EQ(function, GetProcAddress(GetModuleHandleW(L"advapi32.dll"), "RegOpenKeyExW"));
}

TEST(DelayedImports, FunctionThatALibraryLacksFailsLikeAMissingLibrary) {
    const FARPROC function = Resolve("version.dll", "HttpSendRequestW");
    EXPECT_EQ(reinterpret_cast<std::uintptr_t (*)()>(reinterpret_cast<void*>(function))(), 0U);
    EXPECT_EQ(delayed.addresses[0], &Unresolved);
}
