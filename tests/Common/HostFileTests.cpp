#include "Common/HostFile.h"

#include "support/HostExecutable.h"
#include "support/ImportedFunction.h"

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Common {

namespace {

/// A version resource, 1.2.3.4, that has only the fixed block and claims that this is `length` bytes long.
std::vector<std::uint8_t> VersionResource(std::uint16_t length) {
    constexpr wchar_t Key[] = L"VS_VERSION_INFO";
    constexpr std::size_t BlockAt = 40; // six bytes of lengths and the key, padded to a multiple of four
    const std::uint32_t block[16] = {0xFEEF04BD, 0x00010000, 0x00010002, 0x00030004};
    std::vector<std::uint8_t> resource(BlockAt + length);
    const std::uint16_t head[3] = {static_cast<std::uint16_t>(resource.size()), length, 0};
    std::memcpy(resource.data(), head, sizeof head);
    std::memcpy(resource.data() + sizeof head, Key, sizeof Key);
    std::memcpy(resource.data() + BlockAt, block, length);
    return resource;
}

/// Creates an executable file with that resource.
std::filesystem::path MakeFileWithVersion(const std::filesystem::path& folder, std::uint16_t length) {
    const std::filesystem::path path = folder / (std::to_wstring(length) + L".exe");
    std::filesystem::copy_file(Testing::ExecutablePath().parent_path() / "lumeq_opt_in_process.exe", path);
    std::vector<std::uint8_t> resource = VersionResource(length);
    const HANDLE update = BeginUpdateResourceW(path.c_str(), TRUE);
    EXPECT_TRUE(UpdateResourceW(update, reinterpret_cast<LPCWSTR>(RT_VERSION), MAKEINTRESOURCEW(1), 0x0409,
                                resource.data(), static_cast<DWORD>(resource.size())));
    EXPECT_TRUE(EndUpdateResourceW(update, FALSE));
    return path;
}

/// A file with a version.
std::wstring KernelFile() {
    wchar_t folder[MAX_PATH] = {};
    GetSystemDirectoryW(folder, MAX_PATH);
    return std::wstring(folder) + L"\\kernel32.dll";
}

} // namespace

TEST(HostFile, ExecutableWithoutVersionResourceHasZeroVersion) {
    EXPECT_EQ(GetHostFileVersion(), L"0.0.0.0");
}

TEST(HostFile, ExecutableNameIsTheBaseName) { EXPECT_EQ(GetExecutableName(), L"lumeq_machine_tests.exe"); }

TEST(HostFile, FileWithoutVersionResourceReturnsTheFallback) {
    EXPECT_EQ(GetFileVersion(GetHostFilePath(), L"unknown"), L"unknown");
}

TEST(HostFile, FixedBlockOfAnotherLengthMeansZeroVersion) {
    std::filesystem::path program = Testing::ExecutablePath().parent_path();
    const std::filesystem::path folder = program / ("versions" + std::to_string(GetCurrentProcessId()));
    std::filesystem::create_directory(folder);
    EXPECT_EQ(GetFileVersion(MakeFileWithVersion(folder, 52), L"unknown"), L"1.2.3.4");
    for (const std::uint16_t length : {48, 56})
        EXPECT_EQ(GetFileVersion(MakeFileWithVersion(folder, length), L"unknown"), L"0.0.0.0") << length;
    std::filesystem::remove_all(folder);
}

TEST(HostFile, UnknownExecutableHasNeitherNameNorVersion) {
    const Testing::ImportedFunction<decltype(GetModuleFileNameW)> failing(
        "kernel32.dll", "GetModuleFileNameW", [](HMODULE, wchar_t* path, DWORD) -> DWORD {
            path[0] = L'x';
            return 0;
        });
    EXPECT_EQ(GetHostFilePath(), L"");
    EXPECT_EQ(GetExecutableName(), L"");
    EXPECT_EQ(GetHostFileVersion(), L"0.0.0.0");
}

TEST(HostFile, ResourceThatCannotBeReadMeansZeroVersion) {
    const Testing::ImportedFunction<decltype(GetFileVersionInfoW)> failing(
        "version.dll", "GetFileVersionInfoW",
        [](const wchar_t*, DWORD, DWORD, void*) -> BOOL { return FALSE; });
    EXPECT_EQ(GetFileVersion(KernelFile(), L"unknown"), L"0.0.0.0");
}

TEST(HostFile, ResourceWithoutFixedBlockMeansZeroVersion) {
    const Testing::ImportedFunction<decltype(VerQueryValueW)> failing(
        "version.dll", "VerQueryValueW", [](const void*, const wchar_t*, void**, UINT* length) -> BOOL {
            *length = 52;
            return FALSE;
        });
    EXPECT_EQ(GetFileVersion(KernelFile(), L"unknown"), L"0.0.0.0");
}

} // namespace Zuvan::Lumeq::Common
