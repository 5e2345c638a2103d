// The sources of those facts about the machine that come from more than one source. Includes platform
// headers: for source files only.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/OsVersion.h"
#include "LumeqLib/Extra/Collection/Utils/WmiProperty.h"

#include <string>

namespace Zuvan::Lumeq::Extra::Collection::Utils {

/// Reads the real machine, unless a derived class overrides it.
class SystemSources {
public:
    virtual ~SystemSources() = default;

    virtual OsVersion Version() const;
    virtual _variant_t WmiProperty(const std::wstring& className, const std::wstring& propertyName) const;
    virtual std::wstring RegistryString(const std::wstring& subKey, const std::wstring& valueName) const;
};

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
