// A TLS handshake, and the server's certificate. Nothing is sent but the handshake, and to a proxy the
// request for a connection.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Tool::Doctor {

struct ProxyAddress {
    std::wstring name; ///< Empty for none.
    std::wstring port;
};

struct Certificate {
    std::string subject;
    std::string issuer;
    std::string firstDay; ///< As 2027-01-31.
    std::string lastDay;
    bool isTrusted = false; ///< As the library's client judges it: whatever its dates and name.
    bool isValidNow = false;
    bool namesServer = false;
};

struct Handshake {
    enum class Stage { Name, Connection, Proxy, Tls, Done };
    Stage stage = Stage::Name; ///< The one that failed, or Done.
    std::string detail;        ///< Why it failed, or what was agreed.
    std::string address;       ///< Of the server, or of the proxy.
    Certificate certificate;   ///< Only if Done.
};

/// Connects to port 443 of the server. `milliseconds` limits each wait for the network.
Handshake ShakeHands(const std::wstring& server, const ProxyAddress& proxy, unsigned long milliseconds);

} // namespace Zuvan::Lumeq::Tool::Doctor
