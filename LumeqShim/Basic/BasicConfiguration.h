// What the settings say about the basic road's message.
#pragma once

#include <string>

namespace Zuvan::LumeqShim {

struct BasicConfiguration {
    std::wstring appDeployedId;   ///< Free text, may be empty.
    std::wstring appDeployedUuid; ///< Of this installation, lower case, no braces.
    std::wstring serverUrl;       ///< With or without a scheme.
    std::wstring projectId;       ///< Not blank.
    std::wstring authToken;       ///< In rotated form.
    std::wstring sessionUuid;     ///< Of this process, lower case, no braces.
};

/// Reads the settings files afresh; a value that they lack is empty. Makes and stores the installation's UUID
/// where there is none. Gives false, with fields missing, if there is no project or the settings cannot be
/// read, which is logged. The calling thread is a COM apartment meanwhile. Under the API lock.
bool GetConfigFileData(BasicConfiguration& configuration);

} // namespace Zuvan::LumeqShim
