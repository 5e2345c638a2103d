// What the settings say about the basic road's message.
#pragma once

#include <functional>
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

/// Where a configuration comes from.
struct ConfigurationSource {
    /// Returns the factory setting of a key, empty if there is none.
    std::function<std::wstring(const wchar_t* key)> factory;
    /// Returns the installation's UUID.
    std::function<std::wstring()> appDeployedUuid;
};

/// Fills the configuration. If there is no project, logs that and returns false. Throws what the source
/// throws.
bool ReadConfiguration(const ConfigurationSource& source, BasicConfiguration& configuration);

/// The key of the installation's UUID in the local file.
inline constexpr wchar_t AppDeployedUuidKey[] = L"AppDeployedUuid";

/// Reads the settings files afresh; a missing value is empty. Creates and stores the installation's UUID if
/// there is none. If there is no project or the settings cannot be read, logs that and returns false with
/// fields missing. COM is initialised meanwhile. Only under the API lock.
bool GetConfigFileData(BasicConfiguration& configuration);

} // namespace Zuvan::LumeqShim
