#include "lumeq/doctor/Kinds.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

constexpr Kind Kinds[] = {
    {Id::HostIs32Bit, "host-is-32-bit", Check::Host, Effect::StopsAll,
     "The application is a 32-bit program, which cannot load the 64-bit Lumeq.dll.",
     "Install the 64-bit edition of the application."},
    {Id::LibraryNotLoaded, "library-not-loaded", Check::Host, Effect::StopsAll,
     "The process has not loaded Lumeq.dll.",
     "Use the application until it starts telemetry; if that changes nothing, reinstall it."},
    {Id::LibraryMissing, "library-missing", Check::Host, Effect::Warns,
     "Lumeq.dll is not in the application's folder.",
     "Reinstall the application, unless it loads Lumeq.dll from another folder: then use --pid."},
    {Id::LibraryIsNot64Bit, "library-is-not-64-bit", Check::Host, Effect::StopsAll,
     "Lumeq.dll is damaged, or not built for 64-bit Intel or AMD processors.", "Reinstall the application."},
    {Id::LibraryIsDouble, "library-is-double", Check::Host, Effect::StopsAll,
     "Lumeq.dll is the recording double for unit tests, which delivers nothing.",
     "Reinstall the application, and report this to its makers."},
    {Id::TrackingDisabled, "tracking-disabled", Check::Registry, Effect::StopsAll,
     "TrackingDisabled is 1 in the user's registry: a policy turns telemetry off.",
     "Leave it if your organisation set it; otherwise delete the value and restart the application."},
    {Id::ChoiceMissing, "choice-missing", Check::Choice, Effect::StopsAll,
     "The user has neither agreed nor declined yet.",
     "Let the user answer the application's question about telemetry."},
    {Id::ChoiceIsNo, "choice-is-no", Check::Choice, Effect::StopsAll, "The user has declined telemetry.",
     "Only the user may change this, in the application's settings."},
    {Id::ChoiceInvalid, "choice-invalid", Check::Choice, Effect::StopsAll,
     "UserOptIn is neither True nor False, which counts as declined.",
     "Let the user choose again in the application's settings."},
    {Id::PauseLeft, "pause-left", Check::Choice, Effect::StopsAll,
     "Telemetry is paused: an application paused it, or ended during a pause.",
     "Restart the application: its start ends a pause that is left over."},
    {Id::FactoryMissing, "factory-missing", Check::Factory, Effect::StopsAll,
     "There is no factory settings file beside the application.",
     "Reinstall the application, or add the file that belongs to it."},
    {Id::FactoryShadowed, "factory-shadowed", Check::Factory, Effect::Notes,
     "There are two factory settings files, and the application ignores the shared one.",
     "Check that the settings you want are in the file that is used."},
    {Id::FactoryRefused, "factory-refused", Check::Factory, Effect::StopsAll,
     "The factory settings file cannot be read, is not well-formed, or has the wrong version.",
     "Replace the file by the one that was delivered with the application."},
    {Id::FactoryNotExamined, "factory-not-examined", Check::Factory, Effect::Notes,
     "No application was named, so its factory settings and companion library were not examined.",
     "Name the application's executable, or use --pid."},
    {Id::ProjectMissing, "project-missing", Check::Factory, Effect::StopsAll,
     "ProjectId is missing or empty.", "Add the project's identifier to the factory settings file."},
    {Id::ProjectOdd, "project-odd", Check::Factory, Effect::Warns,
     "ProjectId contains characters other than ASCII letters, digits, \"-\", \".\", \"_\" and \"~\".",
     "Copy the project's identifier again, without spaces."},
    {Id::ServerMissing, "server-missing", Check::Factory, Effect::StopsAll,
     "LUMServerUri is missing or empty.", "Add LUMServerUri with the server's address."},
    {Id::ServerUnusable, "server-unusable", Check::Factory, Effect::StopsAll,
     "LUMServerUri leaves no valid server name after its last slash.",
     "Write https:// and the server's name, without a port and without a slash at the end."},
    {Id::ServerCut, "server-cut", Check::Factory, Effect::Warns,
     "LUMServerUri has a path, and only the part after its last slash is used, as the server's name.",
     "Write https:// and the server's name only."},
    {Id::TokenMissing, "token-missing", Check::Factory, Effect::Warns,
     "AuthenticationToken is missing or empty, so the service will probably refuse the message.",
     "Add the service's token in ROT13."},
    {Id::TokenUnprintable, "token-unprintable", Check::Factory, Effect::StopsAll,
     "AuthenticationToken does not decode to printable ASCII text without spaces.",
     "Write the service's token again in ROT13."},
    {Id::DeployedIdScrubbed, "deployed-id-scrubbed", Check::Factory, Effect::Warns,
     "AppDeployedId contains characters that are sent as spaces.",
     "Use printable ASCII characters in AppDeployedId."},
    {Id::KeyUnknown, "key-unknown", Check::Factory, Effect::Warns,
     "The factory settings file has a key that the library does not read there.",
     "Correct its spelling, capitals included, or remove it."},
    {Id::KeyTwice, "key-twice", Check::Factory, Effect::Warns,
     "A key is in the factory settings file twice, and only the first one counts.", "Remove one of the two."},
    {Id::LocalDamaged, "local-damaged", Check::Local, Effect::StopsAll,
     "The local settings file is not well-formed, so telemetry and its log are off.",
     "Close the application, delete the file, and let the user choose again."},
    {Id::LocalUnreadable, "local-unreadable", Check::Local, Effect::StopsAll,
     "The local settings file exists but cannot be opened, so telemetry and its log are off.",
     "Give all users access to the file, and see that no other program keeps it open."},
    {Id::LocalReadOnly, "local-read-only", Check::Local, Effect::Warns,
     "This user cannot write the local settings file, so no choice of the user is kept.",
     "Remove the read-only mark, and give all users the right to change the file."},
    {Id::LocalNotShared, "local-not-shared", Check::Local, Effect::Warns,
     "The folder of the local settings is not open to all users, so some of them cannot save a choice.",
     "Give Everyone the right to create and change files in the folder."},
    {Id::LocalElsewhere, "local-elsewhere", Check::Local, Effect::Notes,
     "Other folders contain local settings files too, for applications that chose a subfolder.",
     "If the application is one of them, run the doctor again with --subfolder."},
    {Id::RuntimeMissing, "runtime-missing", Check::Runtime, Effect::LosesEvents,
     "The .NET Framework 4 runtime is not installed: events are dropped, and only the message about the "
     "machine is sent.",
     "Install .NET Framework 4.8, or turn it on in Windows' optional features."},
    {Id::CompanionMissing, "companion-missing", Check::Runtime, Effect::LosesEvents,
     "The companion library is neither beside the application nor beside Lumeq.dll.",
     "Reinstall the application."},
    {Id::CompanionIsNot64Bit, "companion-is-not-64-bit", Check::Runtime, Effect::LosesEvents,
     "The companion library is damaged, or not built for 64-bit Intel or AMD processors.",
     "Reinstall the application."},
    {Id::CompanionDoesNotLoad, "companion-does-not-load", Check::Runtime, Effect::LosesEvents,
     "Windows refuses to load the companion library, often because a library that it needs is missing.",
     "Reinstall the application and the runtime libraries that it comes with."},
    {Id::CompanionCrashes, "companion-crashes", Check::Runtime, Effect::StopsAll,
     "The companion library ends or blocks the process that loads it.",
     "Reinstall the application, and report this with the bundle."},
    {Id::CompanionLacksOperation, "companion-lacks-operation", Check::Runtime, Effect::LosesEvents,
     "The companion library lacks some of the eleven operations that Lumeq.dll calls.",
     "Reinstall the application: the two libraries are of different versions."},
    {Id::WmiSilent, "wmi-silent", Check::Wmi, Effect::Warns,
     "Windows Management Instrumentation does not answer, so the message calls the machine unknown.",
     "Start the service Winmgmt and check its repository with winmgmt /verifyrepository."},
    {Id::WmiSlow, "wmi-slow", Check::Wmi, Effect::Warns,
     "Windows Management Instrumentation is slow, and the start of each run waits for it.",
     "Look for other programs that keep the service Winmgmt busy."},
    {Id::WmiHangs, "wmi-hangs", Check::Wmi, Effect::StopsAll,
     "Windows Management Instrumentation gave no answer in time; a start waits for it without a limit.",
     "Restart the service Winmgmt, or the machine."},
    {Id::NameUnknown, "name-unknown", Check::Network, Effect::StopsAll, "The server's name has no address.",
     "Check LUMServerUri and the machine's name server."},
    {Id::ProxyAutomatic, "proxy-automatic", Check::Network, Effect::Notes,
     "The proxy is configured by a script, which the doctor does not run: it connected directly.",
     "If the direct connection fails, ask the network's administrator."},
    {Id::ProxyRefuses, "proxy-refuses", Check::Network, Effect::StopsAll,
     "The proxy did not open a connection to the server.",
     "Let the proxy pass connections to port 443 of the server, without a password."},
    {Id::ServerUnreachable, "server-unreachable", Check::Network, Effect::StopsAll,
     "There is no connection to port 443 of the server or the proxy.",
     "Let the firewall pass connections to this address and port."},
    {Id::HandshakeFails, "handshake-fails", Check::Network, Effect::StopsAll,
     "The server did not agree on an encrypted connection.",
     "Look for a firewall that inspects connections, and turn TLS 1.2 on."},
    {Id::CertificateUntrusted, "certificate-untrusted", Check::Network, Effect::StopsAll,
     "The server's certificate comes from an authority that this machine does not trust.",
     "Install the authority's root certificate, or exempt the server from inspection."},
    {Id::CertificateExpired, "certificate-expired", Check::Network, Effect::Warns,
     "The server's certificate is not valid today; the library accepts it, but the date may be wrong.",
     "Check the machine's date; otherwise let the service renew its certificate."},
    {Id::CertificateNameWrong, "certificate-name-wrong", Check::Network, Effect::Warns,
     "The server's certificate is for another name; the library accepts it.",
     "Check that LUMServerUri names the right server."},
    {Id::LogOn, "log-on", Check::Log, Effect::Notes,
     "The log is on, and it contains what the application passes and the token.",
     "Turn it off in the factory settings file when you have what you need."},
    {Id::LogSettingInvalid, "log-setting-invalid", Check::Log, Effect::Warns,
     "Log, LogLevel or LogDate has a value that the library does not know.",
     "Use on, off or date; error, warning, trace or debug; and a date like 2027-01-31."},
    {Id::LogHasNoFolder, "log-has-no-folder", Check::Log, Effect::Warns,
     "There is no folder that the log could be written to.",
     "Set TMP to the full path of a folder that the user may write to."},
    {Id::LogMutexHeld, "log-mutex-held", Check::Log, Effect::Warns,
     "A process holds the log's mutex for longer than a line waits, so lines are lost and calls take a "
     "second.",
     "End that process."},
};

consteval bool IsInOrder() {
    for (std::size_t i = 0; i < std::size(Kinds); ++i)
        if (Kinds[i].id != static_cast<Id>(i) || (i > 0 && Kinds[i].check < Kinds[i - 1].check))
            return false;
    return std::size(Kinds) == static_cast<std::size_t>(Id::Count);
}
static_assert(IsInOrder());

constexpr const char* Checks[] = {"host",    "registry", "choice",  "factory", "local",
                                  "runtime", "wmi",      "network", "log"};
constexpr const char* Effects[] = {"stops everything", "loses events", "warning", "note"};

} // namespace

const Kind& KindOf(Id id) { return Kinds[static_cast<std::size_t>(id)]; }

const char* NameOf(Check check) { return Checks[static_cast<std::size_t>(check)]; }
const char* NameOf(Effect effect) { return Effects[static_cast<std::size_t>(effect)]; }

Check CheckNamed(std::string_view name) {
    const auto found = std::find(std::begin(Checks), std::end(Checks), name);
    if (found == std::end(Checks))
        throw std::runtime_error("there is no check " + std::string(name));
    return static_cast<Check>(found - std::begin(Checks));
}

} // namespace Zuvan::Lumeq::Tool::Doctor
