// A fake WMI of COM objects. It answers as scripted and records every question.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/WmiProperty.h"

#include <deque>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// One at a time, because the entry points are plain functions.
class FakeWmi {
public:
    FakeWmi();
    ~FakeWmi();
    FakeWmi(const FakeWmi&) = delete;
    FakeWmi& operator=(const FakeWmi&) = delete;

    Extra::Collection::Utils::WmiEntryPoints EntryPoints() const;

    /// Answer of one instance for the property. A failed result has no value.
    struct Answer {
        HRESULT result;
        _variant_t value;
    };

    HRESULT createInstanceResult = S_OK;
    HRESULT connectServerResult = S_OK;
    HRESULT setProxyBlanketResult = S_OK;
    HRESULT execQueryResult = S_OK;
    HRESULT nextResult = S_OK;
    bool givesNullServices = false;
    bool throwsStandardException = false; ///< Instead of answering the query.
    std::deque<Answer> instances;         ///< One for each instance of the class.

    /// Every call with its arguments, and "release" with the name of the destroyed object.
    std::vector<std::string> calls;
    int liveObjects = 0;
};

} // namespace Zuvan::Lumeq::Testing
