// The types that Lumeq passes to the companion library, for the maker of that library; hosts do not need
// them. The companion library, LumeqShim.Managed.dll, is a separate DLL that queues records and delivers
// them. It exports the eleven operations at the end of this file.
//
// - Toolchain: objects are passed by address, so both sides must be built with one toolchain. A build that
//   mixes two stops in LumeqToolchain.h.
// - Lifetime: every argument is valid only until the operation returns. Copy what you keep.
// - Threads: an operation runs on the host's thread while Lumeq holds its lock. It must not call a function
//   of LumeqApi.h, which throws std::system_error there, and must not wait for another thread that calls one.
// - Failures: an operation reports a failure by throwing a C++ exception of any type. Lumeq catches and logs
//   it. It also survives an exception of the managed runtime (structured exceptions 0xE0434352 and
//   0xE0434F4D) and logs that as unknown; native frames that such an exception leaves may keep what they own.
//   No other structured exception (SEH) may leave an operation: it reaches the host. With MSVC, build with
//   /EHs, because these are extern "C" functions that throw.
#pragma once

#include <Lumeq/LumeqToolchain.h>

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace Zuvan::Lumeq::Extra::Eventing {

class Variant;

/// A record. Unordered; keys are unique and compared by code unit.
using Dictionary = std::unordered_map<std::wstring, Variant>;

/// Free-form fields of a host: name to value.
using StringDictionary = std::unordered_map<std::wstring, std::wstring>;

/// The value of a time that is not valid, in milliseconds since 1970-01-01 UTC.
inline constexpr std::uint64_t InvalidTime = ~std::uint64_t{0};

/// Returns the time in milliseconds since 1970-01-01 UTC, or InvalidTime.
using EpochClock = std::uint64_t (*)();

/// The value of one field of a record: nothing, a text, a list of texts, or a nested record. Owns its value;
/// a copy is deep. Not synchronised: one thread at a time.
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
    /// Takes the value and leaves `other` Null. Assigning an object to itself changes nothing.
    Variant& operator=(Variant&& other);
    /// Copies the value. Assigning the object that this one holds already changes nothing.
    Variant& operator=(const std::wstring& text);
    Variant& operator=(const StringListType& list);
    Variant& operator=(const DictionaryType& dictionary);
    /// Takes the fields and leaves `dictionary` empty.
    Variant& operator=(DictionaryType&& dictionary);

    /// Checked access. Throws InvalidOperationException unless the value has that type.
    const std::wstring& AsString() const;
    std::wstring& AsString();
    const StringListType& AsStringList() const;
    StringListType& AsStringList();
    const DictionaryType& AsDictionary() const;
    DictionaryType& AsDictionary();

    ValueType Type() const noexcept { return _type; }

    /// Access for readers that do not link Lumeq's code: null unless the value has that type.
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
    /// `details` may be null. The clock is read first, so that building the record does not shift the time.
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

/// File name of the companion library. Lumeq looks in the host executable's folder, then in its own.
inline constexpr wchar_t CompanionFileName[] = L"LumeqShim.Managed.dll";

/// The eleven operations that the companion library exports, undecorated. Each argument follows the rules at
/// the top of this file.
namespace Companion {

using Lumeq::Extra::Eventing::EventingEvent;
using Lumeq::Extra::Eventing::StringDictionary;

extern "C" {
/// Begins a run. If it fails, Lumeq sends the message about the machine instead. `types` is never null.
using StartupInternal = void(const std::wstring& appName, const StartupTypes* types, bool trackSystemInfo,
                             bool trackPrintQueueInfo);
/// Ends the run; waits for delivery up to `timeoutMsec` milliseconds, which is 0 or more.
using ShutdownInternal = void(std::int32_t timeoutMsec);
/// Delivers what is queued; waits up to `timeoutMsec` milliseconds, which is 0 or more.
using FlushInternal = void(std::int32_t timeoutMsec);
/// Returns the user's choice. A failure counts as false.
using GetUserOptInInternal = bool();
/// Stores the user's choice in the local settings file, under `UserOptIn`. After a failure Lumeq stores it.
using SetUserOptInInternal = void(bool userHasOptedIn);
/// Stores a value in the local settings file. After a failure Lumeq stores it.
using SetLocalValueInternal = void(const std::wstring& key, const std::wstring& value);
/// Keeps the local settings file in this subfolder from now on.
using LocalSettingsSubfolderInternal = void(const std::wstring& path);
/// Queues an event. The second and the third argument are always null.
using PostEventInternal = void(const EventingEvent& event, void* second, void* third);
/// Queues data that is not an event, such as one discovered printer. The third argument is always null.
using PostDataInternal = void(const StringDictionary& data, const std::wstring& dataType, void* third);
/// Collects and sends the print queues of the machine.
using TrackPrintQueueInfoInternal = void();
/// Collects and sends the system information of the machine.
using TrackSystemInformationInternal = void();
}

} // namespace Companion
} // namespace Zuvan::LumeqShim
