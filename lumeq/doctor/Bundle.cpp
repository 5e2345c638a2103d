#include "lumeq/doctor/Bundle.h"

#include "Common/LogPlaces.h"
#include "Common/Paths.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "lumeq/doctor/Masking.h"
#include "lumeq/doctor/Texts.h"
#include "lumeq/doctor/ZipFile.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

/// Of each file. Logs have no limit, and their ends say what happened last.
constexpr std::streamoff LongestContent = 4 * 1024 * 1024;

std::wstring Environment(const wchar_t* name) {
    wchar_t value[512] = {};
    GetEnvironmentVariableW(name, value, 512);
    return value;
}

/// As far as the doctor knows them. The masking has rules for the others.
TextMasking MaskingFor(const Examination& examination) {
    const std::wstring token = examination.factory.TextOf(L"AuthenticationToken");
    std::vector<std::string> secrets = {Utf8(token)};
    try {
        secrets.push_back(Utf8(Common::Rot13Wide(token)));
    } catch (const std::range_error&) {
        // It cannot be decoded, so nothing contains it decoded.
    }
    return TextMasking(std::move(secrets),
                       {Utf8(Environment(L"USERNAME")), Utf8(Environment(L"COMPUTERNAME"))});
}

/// The end of the file, from a line's beginning on. Files in UTF-16 become UTF-8, so that masking finds all.
std::string ReadEnd(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary | std::ios::ate);
    const std::streamoff size = file ? static_cast<std::streamoff>(file.tellg()) : 0;
    const std::streamoff start = std::max<std::streamoff>(0, size - LongestContent);
    std::string content(static_cast<std::size_t>(size - start), '\0');
    file.seekg(start);
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (content.starts_with("\xff\xfe")) {
        std::wstring text((content.size() - 2) / sizeof(wchar_t), L'\0');
        std::copy_n(content.data() + 2, text.size() * sizeof(wchar_t), reinterpret_cast<char*>(text.data()));
        return Utf8(text);
    }
    return start == 0 ? content : content.substr(std::min(content.find('\n'), content.size() - 1) + 1);
}

std::string FileName(const std::wstring& path) { return Utf8(path.substr(path.find_last_of(L"\\/") + 1)); }

std::vector<std::pair<std::string, std::wstring>> FilesOf(const Examination& examination) {
    std::vector<std::pair<std::string, std::wstring>> files;
    if (const std::wstring& host = examination.host.path; !host.empty())
        for (const std::wstring& path :
             {Core::Utils::OwnFactoryPathOf(host), Core::Utils::SharedFactoryPathOf(host)})
            files.emplace_back("settings/" + FileName(path), path);
    files.emplace_back("settings/" + FileName(examination.local.path), examination.local.path);
    for (const wchar_t* name : {Common::LogName, Common::DataLogName, Common::ErrorLogName})
        files.emplace_back("log/" + Utf8(name), Common::LogFolder() + L"\\" + name);
    return files;
}

} // namespace

void WriteBundle(const Examination& examination, const std::string& reportText, const std::string& path) {
    const TextMasking masking = MaskingFor(examination);
    ZipFile zip;
    zip.Add("report.json", masking.Masked(reportText));
    for (const auto& [name, source] : FilesOf(examination))
        if (Common::IsFile(source))
            zip.Add(masking.Masked(name), masking.Masked(ReadEnd(source)));
    std::ofstream file(std::filesystem::path(Wide(path)), std::ios::binary);
    if (!(file << zip.Finished()).flush())
        throw std::runtime_error(path + " cannot be written");
}

} // namespace Zuvan::Lumeq::Tool::Doctor
