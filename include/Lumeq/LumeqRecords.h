// The types that cross from Lumeq to the companion library that stands behind the hand-over.
//
// For the maker of that library, not for hosts. The objects are passed by address, so both sides must be
// built with one toolchain; LumeqToolchain.h stops a build that mixes two. Everything arrives on the host's
// thread and is valid only until the operation returns: copy what is to be kept. An operation reports failure
// by throwing; Lumeq catches whatever C++ can throw. An exception of the managed runtime or of the processor
// must not leave an operation. With MSVC, build with /EHs: these are extern "C" functions that throw. Lumeq's
// lock is held meanwhile, so an operation must not call a function of LumeqApi.h, nor wait for one.
#pragma once

#include <Lumeq/LumeqToolchain.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zuvan::Lumeq::Extra::Eventing {

class Variant;

/// A record: unordered, keys unique and compared by exact code units.
using Dictionary = std::unordered_map<std::wstring, Variant>;

/// Free-form fields as a host hands them over.
using StringDictionary = std::unordered_map<std::wstring, std::wstring>;

/// Milliseconds since 1970-01-01 UTC that stand for "no valid time".
inline constexpr std::uint64_t InvalidTime = ~std::uint64_t{0};

/// Tells the time in milliseconds since 1970-01-01 UTC, or InvalidTime.
using EpochClock = std::uint64_t (*)();

/// The value of one field of a record: nothing, a text, a list of texts, or a nested record. Owns its value;
/// a copy is deep. No lock: one thread at a time.
class Variant {
public:
    enum class ValueType : std::int32_t { Null = 0, String = 1, StringList = 2, Dictionary = 3 };
    using StringListType = std::vector<std::wstring>;
    using DictionaryType = Eventing::Dictionary;

    Variant() noexcept = default;
    Variant(const Variant& other);
    Variant(Variant&& other) noexcept;
    ~Variant();

    Variant& operator=(const Variant& other);
    /// Takes the value and leaves `other` Null; of itself: nothing happens.
    Variant& operator=(Variant&& other);
    /// Assigning the very object that is already held changes nothing.
    Variant& operator=(const std::wstring& text);
    Variant& operator=(const StringListType& list);
    Variant& operator=(const DictionaryType& dictionary);
    /// Leaves `dictionary` empty.
    Variant& operator=(DictionaryType&& dictionary);

    /// Checked access: throws InvalidOperationException unless the value is of that type.
    const std::wstring& AsString() const;
    std::wstring& AsString();
    const StringListType& AsStringList() const;
    StringListType& AsStringList();
    const DictionaryType& AsDictionary() const;
    DictionaryType& AsDictionary();

    ValueType Type() const noexcept { return _type; }

    /// Unchecked access for readers that have no link to Lumeq's code: null unless the value is of that type.
    const std::wstring* StringIf() const noexcept {
        return _type == ValueType::String ? static_cast<const std::wstring*>(_value) : nullptr;
    }
    const StringListType* StringListIf() const noexcept {
        return _type == ValueType::StringList ? static_cast<const StringListType*>(_value) : nullptr;
    }
    const DictionaryType* DictionaryIf() const noexcept {
        return _type == ValueType::Dictionary ? static_cast<const DictionaryType*>(_value) : nullptr;
    }

private:
    friend struct RecordLayout;
    friend struct VariantAccess;

    template <class Value>
    Variant& Hold(Value&& value, ValueType type);
    void Clear();
    void* CloneValue() const;

    void* _value = nullptr;
    ValueType _type = ValueType::Null;
};

class EventDetails;

/// The envelope of every usage event: its time and its `app_eventinfo/2.0.1` record.
class EventingEvent {
public:
    /// `details` may be null. The clock is read before anything else is done.
    EventingEvent(const std::wstring& actor, const std::wstring& action, const std::wstring& object,
                  const std::wstring& objectLabel, Dictionary context, const EventDetails* details,
                  EpochClock clock);
    EventingEvent(const std::wstring& actor, const std::wstring& action, const std::wstring& object,
                  const std::wstring& objectLabel, Dictionary context, const EventDetails* details);
    EventingEvent(EventingEvent&&) = default;
    EventingEvent(const EventingEvent&) = delete;
    EventingEvent& operator=(const EventingEvent&) = delete;
    virtual ~EventingEvent();

    /// Time of construction in milliseconds since 1970-01-01 UTC, or InvalidTime.
    std::uint64_t Timestamp() const noexcept { return _timestamp; }
    const Dictionary& Record() const noexcept { return _record; }

private:
    friend struct RecordLayout;
    friend class CompletionEvent;

    std::uint64_t _timestamp;
    Dictionary _record;
};

/// The envelope of the end of a task: `app_event_details` also holds `task_result` and `task_duration`.
class CompletionEvent : public EventingEvent {
public:
    /// `details` may be null. `startTime` in milliseconds since 1970-01-01 UTC, or InvalidTime.
    CompletionEvent(const std::wstring& action, const std::wstring& object, const std::wstring& objectLabel,
                    const std::wstring& taskResult, const std::uint64_t& startTime, Dictionary context,
                    const EventDetails* details, EpochClock clock);
    CompletionEvent(const std::wstring& action, const std::wstring& object, const std::wstring& objectLabel,
                    const std::wstring& taskResult, const std::uint64_t& startTime, Dictionary context,
                    const EventDetails* details);
    CompletionEvent(CompletionEvent&& other);
    ~CompletionEvent() override;

private:
    friend struct RecordLayout;

    // Readers find the first key at offset 80, where a map of 64 bytes ends; a smaller map is padded.
    alignas(16) std::wstring _detailsKey;
    std::wstring _durationKey;
    std::wstring _resultKey;
};

} // namespace Zuvan::Lumeq::Extra::Eventing

namespace Zuvan::LumeqShim {

/// How and why the application was started, as record numbers.
struct StartupTypes {
    std::uint32_t howType;
    std::uint32_t whyType;
};

/// File name of the companion library, which stands beside the host executable or beside Lumeq.dll.
inline constexpr wchar_t CompanionFileName[] = L"LumeqShim.Managed.dll";

/// The eleven operations that the companion library exports under these plain names.
namespace Companion {

using Lumeq::Extra::Eventing::EventingEvent;
using Lumeq::Extra::Eventing::StringDictionary;

extern "C" {
using StartupInternal = void(const std::wstring& appName, const StartupTypes* types, bool trackSystemInfo,
                             bool trackPrintQueueInfo);
using ShutdownInternal = void(std::int32_t timeoutMsec);
using FlushInternal = void(std::int32_t timeoutMsec);
using GetUserOptInInternal = bool();
using SetUserOptInInternal = void(bool userHasOptedIn);
using SetLocalValueInternal = void(const std::wstring& key, const std::wstring& value);
using LocalSettingsSubfolderInternal = void(const std::wstring& path);
/// The second and the third argument are always null.
using PostEventInternal = void(const EventingEvent& event, void* second, void* third);
/// The third argument is always null.
using PostDataInternal = void(const StringDictionary& data, const std::wstring& dataType, void* third);
using TrackPrintQueueInfoInternal = void();
using TrackSystemInformationInternal = void();
}

} // namespace Companion
} // namespace Zuvan::LumeqShim
