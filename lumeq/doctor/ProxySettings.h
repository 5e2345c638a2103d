// The user's proxy settings, which the library's client uses.
#pragma once

#include <string>

namespace Zuvan::Lumeq::Tool::Doctor {

struct ProxySettings {
    std::wstring servers; ///< "host:port", or "http=host:port;https=host:port". Empty for none.
    std::wstring bypass;
    bool isAutomatic = false; ///< A script chooses.
};

/// Does not open that client, which would write to the registry.
ProxySettings ReadProxySettings();

} // namespace Zuvan::Lumeq::Tool::Doctor
