#include "lumeq/doctor/TlsClient.h"

#include "Common/ComError.h"
#include "lumeq/doctor/Connection.h"
#include "lumeq/doctor/ServerCertificate.h"
#include "lumeq/doctor/Texts.h"

#include <cstdio>
#include <schannel.h>
#include <sspi.h>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

struct TlsFailure {
    std::string words;
};

struct ProxyFailure {
    std::string words;
};

std::string StatusText(SECURITY_STATUS status) {
    char code[16];
    std::snprintf(code, sizeof code, "0x%08lx", static_cast<unsigned long>(status));
    return Utf8(Common::ComErrorText(status)) + " (" + code + ")";
}

class Credentials {
public:
    /// The doctor judges the certificate itself, to say all that is wrong with it.
    Credentials() {
        SCHANNEL_CRED wishes{};
        wishes.dwVersion = SCHANNEL_CRED_VERSION;
        wishes.dwFlags = SCH_CRED_MANUAL_CRED_VALIDATION | SCH_CRED_NO_DEFAULT_CREDS;
        wchar_t package[] = UNISP_NAME_W;
        const SECURITY_STATUS status = AcquireCredentialsHandleW(
            nullptr, package, SECPKG_CRED_OUTBOUND, nullptr, &wishes, nullptr, nullptr, &handle, nullptr);
        if (status != SEC_E_OK)
            throw TlsFailure{StatusText(status)};
    }
    ~Credentials() { FreeCredentialsHandle(&handle); }
    Credentials(const Credentials&) = delete;
    Credentials& operator=(const Credentials&) = delete;

    CredHandle handle{};
};

/// The client's side of one handshake.
class Context {
public:
    Context(const std::wstring& server, Connection& connection) : _server(server), _connection(connection) {
        SECURITY_STATUS status = Step();
        while (status == SEC_I_CONTINUE_NEEDED || status == SEC_E_INCOMPLETE_MESSAGE) {
            _received += _connection.Receive();
            status = Step();
        }
        if (status != SEC_E_OK)
            throw TlsFailure{StatusText(status)};
    }
    ~Context() {
        if (_exists)
            DeleteSecurityContext(&_context);
    }
    Context(const Context&) = delete;
    Context& operator=(const Context&) = delete;

    CtxtHandle* Handle() { return &_context; }

private:
    /// Gives the received bytes to the platform and sends what it makes of them.
    SECURITY_STATUS Step() {
        SecBuffer in[] = {{static_cast<ULONG>(_received.size()), SECBUFFER_TOKEN, _received.data()},
                          {0, SECBUFFER_EMPTY, nullptr}};
        SecBuffer out[] = {{0, SECBUFFER_TOKEN, nullptr}};
        SecBufferDesc input{SECBUFFER_VERSION, 2, in};
        SecBufferDesc output{SECBUFFER_VERSION, 1, out};
        constexpr ULONG Wishes = ISC_REQ_ALLOCATE_MEMORY | ISC_REQ_CONFIDENTIALITY | ISC_REQ_STREAM |
                                 ISC_REQ_SEQUENCE_DETECT | ISC_REQ_REPLAY_DETECT;
        ULONG granted = 0;
        const SECURITY_STATUS status = InitializeSecurityContextW(
            &_credentials.handle, _exists ? &_context : nullptr, const_cast<wchar_t*>(_server.c_str()),
            Wishes, 0, 0, _exists ? &input : nullptr, 0, &_context, &output, &granted, nullptr);
        if (status == SEC_E_INCOMPLETE_MESSAGE)
            return status;
        _exists = _exists || status >= 0;
        // What the platform has not used begins its next message.
        const std::size_t unused = in[1].BufferType == SECBUFFER_EXTRA ? in[1].cbBuffer : 0;
        _received.erase(0, _received.size() - unused);
        SendAndFree(out[0]);
        return status;
    }

    void SendAndFree(const SecBuffer& token) {
        if (!token.pvBuffer)
            return;
        const std::string bytes(static_cast<const char*>(token.pvBuffer), token.cbBuffer);
        FreeContextBuffer(token.pvBuffer);
        if (!bytes.empty())
            _connection.Send(bytes.data(), bytes.size());
    }

    std::wstring _server;
    Connection& _connection;
    Credentials _credentials;
    CtxtHandle _context{};
    bool _exists = false;
    std::string _received;
};

std::string ProtocolOf(Context& context) {
    SecPkgContext_ConnectionInfo information{};
    if (QueryContextAttributesW(context.Handle(), SECPKG_ATTR_CONNECTION_INFO, &information) != SEC_E_OK)
        return "TLS";
    switch (information.dwProtocol) {
    case SP_PROT_TLS1_CLIENT:
        return "TLS 1.0";
    case 0x200: // TLS 1.1
        return "TLS 1.1";
    case 0x800: // TLS 1.2
        return "TLS 1.2";
    case 0x2000: // TLS 1.3
        return "TLS 1.3";
    default:
        return "TLS";
    }
}

/// Asks the proxy for a connection to the server, as a client of the platform would.
void Tunnel(Connection& proxy, const std::wstring& server) {
    const std::string target = Utf8(server) + ":443";
    const std::string request = "CONNECT " + target + " HTTP/1.1\r\nHost: " + target + "\r\n\r\n";
    proxy.Send(request.data(), request.size());
    std::string answer;
    while (answer.find("\r\n\r\n") == answer.npos && answer.size() < 65536)
        answer += proxy.Receive();
    const std::string status = answer.substr(0, answer.find("\r\n"));
    const std::size_t code = status.find(' ');
    if (!status.starts_with("HTTP/1.") || status.substr(code + 1, 3) != "200")
        throw ProxyFailure{"it answers " + status};
}

void ExamineServer(Handshake& result, Connection& connection, const std::wstring& server) {
    Context context(server, connection);
    PCCERT_CONTEXT certificate = nullptr;
    const SECURITY_STATUS status =
        QueryContextAttributesW(context.Handle(), SECPKG_ATTR_REMOTE_CERT_CONTEXT, &certificate);
    if (status != SEC_E_OK)
        throw TlsFailure{StatusText(status)};
    result.detail = ProtocolOf(context);
    result.certificate = JudgeCertificate(certificate, server);
    CertFreeCertificateContext(certificate);
}

} // namespace

Handshake ShakeHands(const std::wstring& server, const ProxyAddress& proxy, unsigned long milliseconds) {
    using Stage = Handshake::Stage;
    Handshake result;
    const bool isDirect = proxy.name.empty();
    try {
        Connection connection(isDirect ? server : proxy.name, isDirect ? L"443" : proxy.port, milliseconds);
        result.address = connection.Address();
        if (!isDirect) {
            result.stage = Stage::Proxy;
            Tunnel(connection, server);
        }
        result.stage = Stage::Tls;
        ExamineServer(result, connection, server);
        result.stage = Stage::Done;
    } catch (const NameFailure& failure) {
        result.detail = failure.words;
    } catch (const ConnectionFailure& failure) {
        if (result.stage == Stage::Name) {
            result.stage = Stage::Connection;
            result.address = failure.address;
        }
        result.detail = failure.words;
    } catch (const ProxyFailure& failure) {
        result.detail = failure.words;
    } catch (const TlsFailure& failure) {
        result.detail = failure.words;
    }
    return result;
}

} // namespace Zuvan::Lumeq::Tool::Doctor
