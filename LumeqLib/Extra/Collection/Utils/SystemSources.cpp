#include "LumeqLib/Extra/Collection/Utils/SystemSources.h"

#include "LumeqLib/Extra/Collection/Utils/Registry.h"

namespace Zuvan::Lumeq::Extra::Collection::Utils {

OsVersion SystemSources::Version() const { return ReadOsVersion(); }

_variant_t SystemSources::WmiProperty(const std::wstring& className, const std::wstring& propertyName) const {
    return GetWmiProperty(className, propertyName);
}

std::wstring SystemSources::RegistryString(const std::wstring& subKey, const std::wstring& valueName) const {
    return ReadRegistryString(subKey, valueName);
}

} // namespace Zuvan::Lumeq::Extra::Collection::Utils
