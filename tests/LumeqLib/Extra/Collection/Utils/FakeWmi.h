// WMI made of objects of the test's own: it answers as told and keeps what it was asked.
#pragma once

#include "LumeqLib/Extra/Collection/Utils/WmiProperty.h"

#include <deque>
#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

/// One at a time: the entry points are plain functions.
class FakeWmi {
public:
    FakeWmi();
    ~FakeWmi();
    FakeWmi(const FakeWmi&) = delete;
    FakeWmi& operator=(const FakeWmi&) = delete;

    Extra::Collection::Utils::WmiEntryPoints EntryPoints() const;

    /// What one instance answers for the property. A failed result goes with no value.
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
    bool throwsStandardException = false; ///< In the place of the query.
    std::deque<Answer> instances;         ///< One for each instance of the class.

    /// Every call with its arguments, and "release" with the name of the object that ended.
    std::vector<std::string> calls;
    int liveObjects = 0;
};

} // namespace Zuvan::Lumeq::Testing
