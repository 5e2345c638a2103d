#include "lumeq/doctor/ServerCertificate.h"

#include "lumeq/doctor/Texts.h"

#include <wininet.h>

#include <cstdio>
#include <memory>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

std::string NameIn(PCCERT_CONTEXT certificate, DWORD flags) {
    wchar_t name[256] = {};
    CertGetNameStringW(certificate, CERT_NAME_SIMPLE_DISPLAY_TYPE, flags, nullptr, name, 256);
    return Utf8(name);
}

std::string Day(const FILETIME& time) {
    SYSTEMTIME date{};
    FileTimeToSystemTime(&time, &date);
    char text[32];
    std::snprintf(text, sizeof text, "%04u-%02u-%02u", date.wYear, date.wMonth, date.wDay);
    return text;
}

using Chain = std::unique_ptr<const CERT_CHAIN_CONTEXT, decltype(&CertFreeCertificateChain)>;

Chain ChainOf(PCCERT_CONTEXT certificate) {
    CERT_CHAIN_PARA wishes{};
    wishes.cbSize = sizeof wishes;
    PCCERT_CHAIN_CONTEXT chain = nullptr;
    CertGetCertificateChain(nullptr, certificate, nullptr, certificate->hCertStore, &wishes, 0, nullptr,
                            &chain);
    return {chain, &CertFreeCertificateChain};
}

/// As the library's client sees it, which accepts any dates and names.
bool IsTrusted(const Chain& chain) {
    constexpr DWORD Fatal = CERT_TRUST_IS_REVOKED | CERT_TRUST_IS_NOT_SIGNATURE_VALID |
                            CERT_TRUST_IS_NOT_VALID_FOR_USAGE | CERT_TRUST_IS_UNTRUSTED_ROOT |
                            CERT_TRUST_IS_CYCLIC | CERT_TRUST_IS_PARTIAL_CHAIN;
    return chain && (chain->TrustStatus.dwErrorStatus & Fatal) == 0;
}

/// By the platform's rules for servers, with all other checks left out.
bool NamesServer(const Chain& chain, const std::wstring& server) {
    SSL_EXTRA_CERT_CHAIN_POLICY_PARA ssl{};
    ssl.cbSize = sizeof ssl;
    ssl.dwAuthType = AUTHTYPE_SERVER;
    ssl.fdwChecks = SECURITY_FLAG_IGNORE_REVOCATION | SECURITY_FLAG_IGNORE_UNKNOWN_CA |
                    SECURITY_FLAG_IGNORE_WRONG_USAGE | SECURITY_FLAG_IGNORE_CERT_DATE_INVALID;
    ssl.pwszServerName = const_cast<wchar_t*>(server.c_str());
    CERT_CHAIN_POLICY_PARA policy{};
    policy.cbSize = sizeof policy;
    policy.pvExtraPolicyPara = &ssl;
    CERT_CHAIN_POLICY_STATUS status{};
    status.cbSize = sizeof status;
    return chain && CertVerifyCertificateChainPolicy(CERT_CHAIN_POLICY_SSL, chain.get(), &policy, &status) &&
           static_cast<HRESULT>(status.dwError) != CERT_E_CN_NO_MATCH;
}

} // namespace

Certificate JudgeCertificate(PCCERT_CONTEXT certificate, const std::wstring& server) {
    const Chain chain = ChainOf(certificate);
    Certificate judged;
    judged.subject = NameIn(certificate, 0);
    judged.issuer = NameIn(certificate, CERT_NAME_ISSUER_FLAG);
    judged.firstDay = Day(certificate->pCertInfo->NotBefore);
    judged.lastDay = Day(certificate->pCertInfo->NotAfter);
    judged.isValidNow = CertVerifyTimeValidity(nullptr, certificate->pCertInfo) == 0;
    judged.isTrusted = IsTrusted(chain);
    judged.namesServer = NamesServer(chain, server);
    return judged;
}

} // namespace Zuvan::Lumeq::Tool::Doctor
