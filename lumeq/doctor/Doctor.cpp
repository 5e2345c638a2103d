#include "lumeq/doctor/Doctor.h"

#include "Common/ComScope.h"
#include "Common/Logger.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/CompanionLibrary.h"
#include "LumeqShim/PreLoadingCode.h"
#include "lumeq/doctor/Bundle.h"
#include "lumeq/doctor/ReportText.h"
#include "lumeq/doctor/Texts.h"

#include <algorithm>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

using CheckFunction = void (*)(Examination&);

/// By the numbers of the checks.
constexpr CheckFunction Functions[] = {CheckHost,    CheckRegistry, CheckChoice,  CheckFactory, CheckLocal,
                                       CheckRuntime, CheckWmi,      CheckNetwork, CheckLog};

/// What the library would read at a start.
void ReadSettings(Examination& examination) {
    if (!examination.host.path.empty())
        examination.factory = ReadFactoryFile(Core::Utils::FactoryPathOf(examination.host.path));
    examination.server = UsableServer(examination.factory);
    Core::Utils::localSubfolder = Wide(examination.options.subfolder);
    examination.local = ReadLocalFile(Core::Utils::SharedLocalPath());
}

void RunChecks(Examination& examination) {
    std::vector<Check> wanted;
    for (const std::string& name : examination.options.only)
        wanted.push_back(CheckNamed(name));
    for (std::size_t i = 0; i < std::size(Functions); ++i)
        if (wanted.empty() || std::find(wanted.begin(), wanted.end(), static_cast<Check>(i)) != wanted.end())
            Functions[i](examination);
}

Examination Examine(const DoctorOptions& options) {
    // The library's code would open the log, which makes a folder. It does not while this exists.
    const Common::FirstUseDeferral closedLog;
    const Common::ComScope com(L"Zuvan::Lumeq::Tool::Doctor");
    Examination examination;
    examination.options = options;
    examination.host = FindHost(options);
    ReadSettings(examination);
    examination.isManaged = LumeqShim::IsRequiredDotNetVersionInstalled();
    examination.companionPath =
        LumeqShim::CompanionPathFor(examination.host.path, examination.host.libraryPath);
    RunChecks(examination);
    return examination;
}

} // namespace

ExitCode RunDoctor(const DoctorOptions& options, const Output& output) {
    if (options.listsKinds) {
        output.Line(KindsTable());
        return Clean;
    }
    const Examination examination = Examine(options);
    output.Line(options.asJson ? ReportJson(examination) : ReportText(examination, output));
    if (!options.bundle.empty())
        WriteBundle(examination, ReportJson(examination), options.bundle);
    return examination.report.Blocker() ? FoundSomething : Clean;
}

} // namespace Zuvan::Lumeq::Tool::Doctor
