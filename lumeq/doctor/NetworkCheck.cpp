// The way to the server: its name, the proxy, and the encrypted connection.
#include "lumeq/doctor/Examination.h"
#include "lumeq/doctor/ProxySettings.h"
#include "lumeq/doctor/Texts.h"
#include "lumeq/doctor/TlsClient.h"

#include <algorithm>
#include <shlwapi.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

bool IsBypassed(const ProxySettings& proxy, const std::wstring& server) {
    const bool isLocalName = server.find(L'.') == server.npos;
    std::wstring names = proxy.bypass; // PathMatchSpecW knows no other separator than the semicolon.
    std::replace(names.begin(), names.end(), L' ', L';');
    return (!names.empty() && PathMatchSpecW(server.c_str(), names.c_str())) ||
           (isLocalName && proxy.bypass.find(L"<local>") != proxy.bypass.npos);
}

/// Of "http=a:1;https=b:2" the one for HTTPS; else the one for everything.
std::wstring ServerForHttps(const std::wstring& servers) {
    constexpr std::wstring_view Prefix = L"https=";
    const std::size_t https = servers.find(Prefix);
    const bool isForAll = servers.find(L'=') == servers.npos;
    const std::wstring from = https != servers.npos ? servers.substr(https + Prefix.size())
                              : isForAll            ? servers
                                                    : L"";
    return from.substr(0, from.find_first_of(L"; "));
}

ProxyAddress AddressIn(const std::wstring& server) {
    const std::size_t scheme = server.find(L"://");
    const std::wstring name = scheme == server.npos ? server : server.substr(scheme + 3);
    const std::size_t colon = name.rfind(L':');
    return colon == name.npos ? ProxyAddress{name, L"80"}
                              : ProxyAddress{name.substr(0, colon), name.substr(colon + 1)};
}

std::string ServerText(const Examination& examination, const Handshake& handshake,
                       const ProxyAddress& proxy) {
    std::string text = Utf8(examination.server);
    if (!proxy.name.empty())
        text += " by the proxy " + Utf8(proxy.name + L":" + proxy.port);
    return handshake.address.empty() || handshake.address == text ? text
                                                                  : text + " (" + handshake.address + ")";
}

std::string CertificateText(const Certificate& certificate) {
    return "certificate for " + certificate.subject + " by " + certificate.issuer + ", valid from " +
           certificate.firstDay + " to " + certificate.lastDay;
}

void ReportCertificate(const Certificate& certificate, Effect untrusted, Report& report) {
    const std::string text = CertificateText(certificate);
    if (!certificate.isTrusted)
        report.Wrong(Id::CertificateUntrusted, untrusted, text);
    if (!certificate.isValidNow)
        report.Wrong(Id::CertificateExpired, text);
    if (!certificate.namesServer)
        report.Wrong(Id::CertificateNameWrong, text);
    if (certificate.isTrusted && certificate.isValidNow && certificate.namesServer)
        report.Well(Check::Network, text);
}

Id IdOf(Handshake::Stage stage) {
    switch (stage) {
    case Handshake::Stage::Name:
        return Id::NameUnknown;
    case Handshake::Stage::Connection:
        return Id::ServerUnreachable;
    case Handshake::Stage::Proxy:
        return Id::ProxyRefuses;
    default:
        return Id::HandshakeFails;
    }
}

} // namespace

void CheckNetwork(Examination& examination) {
    Report& report = examination.report;
    if (examination.server.empty()) {
        report.Well(Check::Network, "not tried, because no server is known");
        return;
    }
    const ProxySettings configured = ReadProxySettings();
    const std::wstring forHttps = ServerForHttps(configured.servers);
    const ProxyAddress proxy =
        forHttps.empty() || IsBypassed(configured, examination.server) ? ProxyAddress{} : AddressIn(forHttps);
    if (configured.isAutomatic)
        report.Wrong(Id::ProxyAutomatic, "");
    const Handshake handshake = ShakeHands(examination.server, proxy, examination.Milliseconds());
    // On the managed road the companion library delivers, by a way of its own.
    const Effect worst = examination.isManaged ? Effect::Warns : Effect::StopsAll;
    const std::string server = ServerText(examination, handshake, proxy);
    if (handshake.stage != Handshake::Stage::Done) {
        report.Wrong(IdOf(handshake.stage), worst, server + ": " + handshake.detail);
        return;
    }
    report.Well(Check::Network, server + ", " + handshake.detail);
    ReportCertificate(handshake.certificate, worst, report);
}

} // namespace Zuvan::Lumeq::Tool::Doctor
