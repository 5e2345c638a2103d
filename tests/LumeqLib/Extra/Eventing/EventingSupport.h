// What the tests of the event model share.
#pragma once

#include "Common/Exceptions.h"
#include "Common/TrackingGate.h"
#include "LumeqLib/Extra/Eventing/EventDetails.h"

#include <Lumeq/LumeqRecords.h>

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

namespace Zuvan::Lumeq::Extra::Eventing {

/// A record as one line with its keys sorted: {a: null, b: "text", c: ["x", "y"], d: {e: "f"}}
inline std::wstring Show(const Dictionary& record);

inline std::wstring Show(const Variant& value) {
    if (const std::wstring* text = value.StringIf())
        return L'"' + *text + L'"';
    if (const Variant::StringListType* list = value.StringListIf()) {
        std::wstring shown;
        for (const std::wstring& element : *list)
            shown += (shown.empty() ? L"\"" : L", \"") + element + L'"';
        return L'[' + shown + L']';
    }
    const Dictionary* record = value.DictionaryIf();
    return record ? Show(*record) : L"null";
}

inline std::wstring Show(const Dictionary& record) {
    std::map<std::wstring, std::wstring> fields;
    for (const auto& [key, value] : record)
        fields[key] = Show(value);
    std::wstring shown;
    for (const auto& [key, value] : fields)
        shown += (shown.empty() ? L"" : L", ") + key + L": " + value;
    return L'{' + shown + L'}';
}

/// FullMessage() of the `Exception` that `action` throws, of exactly that class.
template <class Exception, class Action>
std::wstring FullMessageOf(Action action) {
    try {
        action();
    } catch (const Common::VestoException& caught) {
        if (typeid(caught) == typeid(Exception))
            return caught.FullMessage();
        return L"(another class) " + caught.FullMessage();
    }
    return L"(nothing was thrown)";
}

/// The process-wide model name for the length of a test.
class ModelNameScope {
public:
    explicit ModelNameScope(const std::wstring& modelName) { Common::SetGlobalContext(modelName); }
    ~ModelNameScope() { Common::SetGlobalContext(L""); }
    ModelNameScope(const ModelNameScope&) = delete;
    ModelNameScope& operator=(const ModelNameScope&) = delete;
};

/// A clock that stands at what a test sets.
struct SettableClock {
    static inline std::uint64_t now = 0;
    static std::uint64_t Read() { return now; }
};

/// Details with the fields of a test, which count how many of them are alive.
class CountedDetails : public EventDetails {
public:
    static inline int alive = 0;
    static inline int cloned = 0;

    explicit CountedDetails(Dictionary data) {
        _data = std::move(data);
        ++alive;
    }
    CountedDetails(const CountedDetails& other) : EventDetails(other) { ++alive; }
    ~CountedDetails() override { --alive; }

    std::unique_ptr<EventDetails> Clone() const override {
        ++cloned;
        return std::make_unique<CountedDetails>(*this);
    }
    void Add(const std::wstring& key, const std::wstring& value) { _data[key] = value; }
};

inline Dictionary OneField(const std::wstring& key, const std::wstring& value) {
    Dictionary record;
    record[key] = value;
    return record;
}

} // namespace Zuvan::Lumeq::Extra::Eventing
