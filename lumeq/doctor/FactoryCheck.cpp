// The factory settings file: which one is used, and each of its values.
#include "Common/Exceptions.h"
#include "Common/Paths.h"
#include "Common/Text.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"
#include "LumeqShim/Post/QueueRequest.h"
#include "lumeq/Output.h"
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/Texts.h"

#include <algorithm>
#include <stdexcept>

namespace Zuvan::Lumeq::Tool::Doctor {

using namespace LumeqShim;

namespace {

constexpr const wchar_t* Keys[] = {
    L"ProjectId", L"LUMServerUri", L"AuthenticationToken", L"AppDeployedId", L"Log", L"LogLevel", L"LogDate"};

void CheckProject(const SettingsFile& factory, Report& report) {
    const std::wstring project = factory.TextOf(L"ProjectId");
    if (Common::IsBlank(project))
        report.Wrong(Id::ProjectMissing, factory.Find(L"ProjectId") ? "ProjectId is empty" : "no ProjectId");
    else if (EncodePathPart(project) != project)
        report.Wrong(Id::ProjectOdd, "ProjectId is " + Quoted(project));
    else
        report.Well(Check::Factory, "project " + Utf8(project));
}

/// What a server name may contain. A colon would begin a port, which the library does not split off.
bool IsServerName(const std::wstring& server) {
    return !server.empty() && std::all_of(server.begin(), server.end(), [](wchar_t unit) {
        return IsPrintable(unit) && std::wstring_view(L" :/\\?#@%\"<>").find(unit) == std::wstring_view::npos;
    });
}

/// Whether a path precedes the last slash: the slashes of the scheme are no path.
bool HasPath(const std::wstring& uri) {
    const std::size_t scheme = uri.find(L"://");
    const std::size_t start = scheme == std::wstring::npos ? 0 : scheme + 3;
    return uri.find(L'/', start) != std::wstring::npos;
}

void CheckServer(const SettingsFile& factory, Report& report) {
    const std::wstring uri = factory.TextOf(L"LUMServerUri");
    const std::wstring server = HostFromUrl(uri);
    if (Common::IsBlank(uri)) {
        report.Wrong(Id::ServerMissing,
                     factory.Find(L"LUMServerUri") ? "LUMServerUri is empty" : "no LUMServerUri");
        return;
    }
    if (!IsServerName(server)) {
        report.Wrong(Id::ServerUnusable,
                     "LUMServerUri is " + Quoted(uri) + ", the server's name is " + Quoted(server));
        return;
    }
    if (HasPath(uri))
        report.Wrong(Id::ServerCut,
                     "LUMServerUri is " + Quoted(uri) + ", the server's name is " + Quoted(server));
    else
        report.Well(Check::Factory, "server " + Utf8(server));
}

/// Nothing if the library cannot decode it.
std::optional<std::wstring> DecodedToken(const std::wstring& token) {
    try {
        return Common::Rot13Wide(token);
    } catch (const std::range_error&) {
        return std::nullopt;
    }
}

bool IsVisibleAscii(const std::wstring& text) {
    return std::all_of(text.begin(), text.end(), [](wchar_t unit) { return unit > L' ' && unit <= L'~'; });
}

/// Never shows the token.
void CheckToken(const SettingsFile& factory, Report& report) {
    const std::wstring token = factory.TextOf(L"AuthenticationToken");
    const std::optional<std::wstring> decoded = DecodedToken(token);
    const std::string length = std::to_string(token.size()) + " characters";
    if (token.empty())
        report.Wrong(Id::TokenMissing, "no AuthenticationToken");
    else if (!decoded || !IsVisibleAscii(*decoded))
        report.Wrong(Id::TokenUnprintable, "a token of " + length);
    else
        report.Well(Check::Factory, "a token of " + length + " that decodes to printable text");
}

void CheckDeployedId(const SettingsFile& factory, Report& report) {
    const std::wstring id = factory.TextOf(L"AppDeployedId");
    if (!std::all_of(id.begin(), id.end(), IsPrintable))
        report.Wrong(Id::DeployedIdScrubbed, "AppDeployedId is " + Quoted(id));
}

void CheckKeys(const SettingsFile& factory, Report& report) {
    std::vector<std::wstring> seen;
    for (const Setting& setting : factory.settings) {
        if (std::find(std::begin(Keys), std::end(Keys), setting.key) == std::end(Keys))
            report.Wrong(Id::KeyUnknown, Quoted(setting.key));
        else if (std::count(seen.begin(), seen.end(), setting.key) == 1)
            report.Wrong(Id::KeyTwice, Quoted(setting.key));
        seen.push_back(setting.key);
    }
}

void CheckValues(Examination& examination) {
    CheckProject(examination.factory, examination.report);
    CheckServer(examination.factory, examination.report);
    CheckToken(examination.factory, examination.report);
    CheckDeployedId(examination.factory, examination.report);
    CheckKeys(examination.factory, examination.report);
}

void CheckShadowed(const Examination& examination, Report& report) {
    const std::wstring shared = Core::Utils::SharedFactoryPathOf(examination.host.path);
    if (examination.factory.path != shared && Common::Exists(shared))
        report.Wrong(Id::FactoryShadowed, Utf8(shared) + " is not used");
}

} // namespace

std::wstring UsableServer(const SettingsFile& factory) {
    const std::wstring server = HostFromUrl(factory.TextOf(L"LUMServerUri"));
    return IsServerName(server) ? server : std::wstring();
}

void CheckFactory(Examination& examination) {
    const SettingsFile& factory = examination.factory;
    Report& report = examination.report;
    if (examination.host.path.empty()) {
        report.Wrong(Id::FactoryNotExamined, "");
        return;
    }
    if (!factory.exists) {
        report.Wrong(Id::FactoryMissing, "neither " +
                                             Utf8(Core::Utils::OwnFactoryPathOf(examination.host.path)) +
                                             " nor " + Utf8(factory.path));
        return;
    }
    CheckShadowed(examination, report);
    if (!factory.IsAccepted()) {
        report.Wrong(Id::FactoryRefused, Utf8(factory.path) + ": " + factory.refusal);
        return;
    }
    report.Well(Check::Factory, Utf8(factory.path));
    CheckValues(examination);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
