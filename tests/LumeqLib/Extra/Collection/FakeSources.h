// Sources of information about a machine that does not exist.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/SystemSources.h"

#include <map>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// Knows nothing at first, and records every question.
class FakeSources : public Extra::Collection::Utils::SystemSources {
public:
    Extra::Collection::Utils::OsVersion Version() const override { return version; }
    _variant_t WmiProperty(const std::wstring& className, const std::wstring& propertyName) const override {
        return Answer(wmi, className + L"." + propertyName, _variant_t());
    }
    std::wstring RegistryString(const std::wstring& subKey, const std::wstring& valueName) const override {
        return Answer(registry, subKey + L":" + valueName, std::wstring(L"unknown"));
    }

    Extra::Collection::Utils::OsVersion version{2, 1000};
    std::map<std::wstring, _variant_t> wmi;        ///< By class, point and property.
    std::map<std::wstring, std::wstring> registry; ///< By key, colon and value.
    mutable std::vector<std::wstring> questions;

private:
    template <class Value>
    Value Answer(const std::map<std::wstring, Value>& answers, const std::wstring& question,
                 const Value& otherwise) const {
        questions.push_back(question);
        const auto found = answers.find(question);
        return found == answers.end() ? otherwise : found->second;
    }
};

} // namespace Zuvan::Lumeq::Testing
