// Loading the companion library for real, in a process of its own: it is foreign code, and may crash or hang.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Tool::Doctor {

struct CompanionLoading {
    enum class Outcome { Loaded, Refused, Crashed, NotTried };
    Outcome outcome = Outcome::NotTried;
    std::string detail;
};

/// Starts this program again, with LoadingCommand. Ends that process after the time.
CompanionLoading TryToLoad(const std::wstring& companion, const std::wstring& host,
                           unsigned long milliseconds);

/// The hidden subcommand, and what it does: loads the library as Lumeq.dll does, prints why that failed, and
/// returns the program's exit code.
inline constexpr char LoadingCommand[] = "load-companion";
int LoadCompanionHere(const std::string& companion, const std::string& host);

} // namespace Zuvan::Lumeq::Tool::Doctor
