// What the settings say about the basic road's message.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

struct BasicConfiguration {
    std::wstring appDeployedId;   ///< Free text, may be empty.
    std::wstring appDeployedUuid; ///< Of this installation, lower case, no braces.
    std::wstring serverUrl;       ///< With or without a scheme.
    std::wstring projectId;       ///< Neither empty nor white space only.
    std::wstring authToken;       ///< In rotated form.
    std::wstring sessionUuid;     ///< Of this process, lower case, no braces.
};

/// Reads the settings files afresh; a missing value is empty. Creates and stores the installation's UUID if
/// there is none. If there is no project or the settings cannot be read, logs that and returns false with
/// fields missing. COM is initialised meanwhile. Only under the API lock.
bool GetConfigFileData(BasicConfiguration& configuration);

} // namespace Zuvan::LumeqShim
