// One examination of a machine: what the checks know so far, and the checks. None of them changes anything on
// the machine. They ask the library's own code wherever it decides the same question.
#pragma once

#include "lumeq/doctor/Report.h"
#include "lumeq/doctor/SettingsFile.h"

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Tool::Doctor {

struct DoctorOptions {
    std::string host;
    unsigned long processId = 0;
    std::string appName;
    std::string subfolder;
    std::vector<std::string> only; ///< Names of checks; empty for all.
    double seconds = 10;           ///< How long each answer of the system or the network may take.
    bool loadsCompanion = true;
    bool asJson = false;
    bool listsKinds = false;
    std::string bundle;
};

/// The application that is examined. Paths are empty if they are not known.
struct Host {
    std::wstring path;
    std::wstring libraryPath; ///< Where it loads, or would load, Lumeq.dll from.
    unsigned long processId = 0;
};

/// The message that a start would send, as the library composes it.
struct Message {
    std::string url;
    std::string headers; ///< Without the token.
    std::string text;
    std::string body;
};

struct Examination {
    DoctorOptions options;
    Host host;
    SettingsFile factory;
    SettingsFile local;
    bool isManaged = false; ///< The probe found the runtime.
    std::wstring companionPath;
    std::wstring server; ///< As UsableServer returns it.
    Message message;     ///< Empty if it could not be composed.
    Report report;

    unsigned long Milliseconds() const { return static_cast<unsigned long>(options.seconds * 1000); }
};

/// Throws std::runtime_error if there is no such file or process.
Host FindHost(const DoctorOptions& options);

/// The server's name as the library takes it from the URI; empty if that is no name.
std::wstring UsableServer(const SettingsFile& factory);

void CheckHost(Examination& examination);
void CheckRegistry(Examination& examination);
void CheckChoice(Examination& examination);
void CheckFactory(Examination& examination);
void CheckLocal(Examination& examination);
void CheckRuntime(Examination& examination);
/// Also composes the message.
void CheckWmi(Examination& examination);
void CheckNetwork(Examination& examination);
void CheckLog(Examination& examination);

} // namespace Zuvan::Lumeq::Tool::Doctor
