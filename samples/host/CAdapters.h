// Functions like the exports of Lumeq.dll that call lumeq.h instead.
#pragma once

#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>

namespace SampleHost {

namespace API = Zuvan::Lumeq::API;

/// By the names of the exports that they stand for.
using Adapters = std::map<std::string, void*>;
const Adapters& SessionAdapters();
const Adapters& EventAdapters();
const Adapters& TaskAdapters();

/// LumeqC.dll, once it is loaded.
inline HMODULE cLibrary = nullptr;

template <class Function>
Function* C(const char* name) {
    auto* const address = GetProcAddress(cLibrary, name);
    if (address == nullptr)
        throw std::runtime_error(std::string("LumeqC.dll does not export ") + name);
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(address));
}

/// A dictionary as lumeq.h takes it; points into the map.
class Fields {
public:
    explicit Fields(const API::StringDictionary* map) : _isGiven(map != nullptr) {
        if (map == nullptr)
            return;
        for (const auto& [name, value] : *map)
            _fields.push_back({name.c_str(), value.c_str()});
        _dictionary = {_fields.data(), _fields.size()};
    }
    Fields(const Fields&) = delete;
    Fields& operator=(const Fields&) = delete;

    const lumeq_dictionary* Get() const { return _isGiven ? &_dictionary : nullptr; }

private:
    bool _isGiven;
    std::vector<lumeq_field> _fields;
    lumeq_dictionary _dictionary{};
};

template <class Enumeration>
std::int32_t Number(Enumeration value) {
    return static_cast<std::int32_t>(value);
}

/// An adapter with the type of the export that it stands for.
template <class Export>
void* Like(Export* adapter) {
    return reinterpret_cast<void*>(adapter);
}

} // namespace SampleHost
