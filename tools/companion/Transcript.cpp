#include "tools/companion/Transcript.h"

#include <windows.h>

#include <fstream>
#include <mutex>
#include <stdexcept>

namespace Companion {

std::filesystem::path BesideExecutable(const wchar_t* name) {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).replace_filename(name);
}

void Write(const Members& line) {
    static std::mutex lock;
    static std::ofstream file(BesideExecutable(L"LumeqCompanion.jsonl"), std::ios::binary | std::ios::app);
    const std::string text = JsonText(line) + '\n';
    const std::scoped_lock hold(lock);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    // A killed process must not lose what it received.
    if (!file.flush())
        throw std::runtime_error("LumeqCompanion.jsonl cannot be written");
}

} // namespace Companion
