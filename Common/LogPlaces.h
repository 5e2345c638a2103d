// Where the log is, and the mutex that all processes that write to it share.
#pragma once

#include <cstdint>
#include <string>

namespace Zuvan::Lumeq::Common {

inline constexpr wchar_t LogName[] = L"Lumeq.Log.txt";
inline constexpr wchar_t DataLogName[] = L"Lumeq.Data.txt";
inline constexpr wchar_t ErrorLogName[] = L"Lumeq.Error.txt";

inline constexpr wchar_t LogMutexName[] = L"Global\\LumeqLoggingMutex";
/// How long a line waits for the mutex before it is lost.
inline constexpr std::uint32_t LogMutexWaitMilliseconds = 1000;

/// The folder in the user's temporary folder, which need not exist. Empty if that has no absolute path, and
/// then there is no log.
std::wstring LogFolder();

} // namespace Zuvan::Lumeq::Common
