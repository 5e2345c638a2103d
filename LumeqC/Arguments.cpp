#include "LumeqC/Arguments.h"

namespace Zuvan::Lumeq {

namespace {

bool IsGiven(const wchar_t* text) noexcept { return text != nullptr; }
bool IsGiven(std::int32_t) noexcept { return true; }

/// Elements have a name and one more field, which `valueOf` reads.
template <class Map, class Element, class Value>
std::optional<Map> ReadElements(const Element* elements, std::size_t count, Value Element::*value) {
    std::optional<Map> map(std::in_place);
    if (count == 0)
        return map;
    if (elements == nullptr)
        return std::nullopt;
    for (const Element* element = elements; element != elements + count; ++element) {
        if (!IsGiven(element->name) || !IsGiven(element->*value))
            return std::nullopt;
        (*map)[element->name] = element->*value;
    }
    return map;
}

/// What is passed for a device that cannot be read: the library logs its identifier and skips it.
API::StringDictionary NoDevice() { return {{L"dev_biid", std::wstring()}}; }

} // namespace

std::optional<API::StringDictionary> ReadDictionary(const lumeq_dictionary& dictionary) {
    return ReadElements<API::StringDictionary>(dictionary.fields, dictionary.count, &lumeq_field::value);
}

std::optional<API::ScanFeatureMap> ReadFeatures(const lumeq_feature* features, std::size_t count) {
    return ReadElements<API::ScanFeatureMap>(features, count, &lumeq_feature::is_on);
}

API::DiscoveredDeviceList ReadDevices(const lumeq_dictionary* devices, std::size_t count) {
    if (devices == nullptr)
        return API::DiscoveredDeviceList(count == 0 ? 0 : 1, {nullptr, NoDevice()});
    API::DiscoveredDeviceList list;
    list.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        list.push_back({nullptr, ReadDictionary(devices[i]).value_or(NoDevice())});
    return list;
}

} // namespace Zuvan::Lumeq
