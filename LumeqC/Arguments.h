// What a C caller passes, copied into what the library takes. Nothing here trusts a pointer, a size or a
// count beyond what lumeq.h asks of callers.
#pragma once

#include "LumeqC/CallFrame.h"

#include <Lumeq/LumeqApi.h>
#include <Lumeq/lumeq.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>

namespace Zuvan::Lumeq {

inline std::wstring RequiredText(const wchar_t* text) { return text ? std::wstring(text) : std::wstring(); }

/// A text or null: the caller's own where the call is made before it returns, else a copy.
class OptionalText {
public:
    explicit OptionalText(const wchar_t* text) : _callers(text) {
        if (UsesWorker())
            _copy = RequiredText(text);
    }

    const wchar_t* Get() const noexcept { return _callers && UsesWorker() ? _copy.c_str() : _callers; }

private:
    const wchar_t* _callers; // only compared with null once the caller may have freed it
    std::wstring _copy;
};

/// How many bytes of a caller's struct both sides know. Only whole fields count, and every struct is a
/// multiple of eight bytes, so a size that no header ever had cuts none.
template <class Struct>
std::size_t KnownSize(const Struct& callers) noexcept {
    static_assert(sizeof(Struct) % 8 == 0);
    return std::min(callers.size, sizeof(Struct)) / 8 * 8;
}

/// The part of a caller's struct that both sides know; all zero for null and for a size of zero.
template <class Struct>
Struct ReadStruct(const Struct* from) noexcept {
    Struct known{};
    if (from != nullptr)
        std::memcpy(&known, from, KnownSize(*from));
    return known;
}

/// Null where an array, a name or a value is missing.
std::optional<API::StringDictionary> ReadDictionary(const lumeq_dictionary& dictionary);
std::optional<API::ScanFeatureMap> ReadFeatures(const lumeq_feature* features, std::size_t count);
API::DiscoveredDeviceList ReadDevices(const lumeq_dictionary* devices, std::size_t count);

/// The contexts that every event takes. A malformed `local` makes `Global` an empty text, which is refused.
class Context {
public:
    Context(const lumeq_dictionary* local, const wchar_t* global)
        : _local(local ? ReadDictionary(*local) : std::nullopt), _global(local && !_local ? L"" : global) {}

    const API::StringDictionary* Local() const noexcept { return _local ? &*_local : nullptr; }
    const wchar_t* Global() const noexcept { return _global.Get(); }

private:
    std::optional<API::StringDictionary> _local;
    OptionalText _global;
};

/// The arguments of a screen and of the control on it.
struct Screen {
    Screen(const lumeq_screen& screen, const wchar_t* controlName)
        : flow(screen.flow), path(screen.screen_path), name(RequiredText(screen.screen_name)),
          mode(screen.mode), control(RequiredText(controlName)),
          context(screen.local_context, screen.global_context) {}

    OptionalText flow;
    OptionalText path;
    std::wstring name;
    OptionalText mode;
    std::wstring control;
    Context context;
};

struct Ad {
    explicit Ad(const lumeq_ad& ad)
        : type(static_cast<API::AdType>(ad.type)), product(RequiredText(ad.product)),
          name(RequiredText(ad.name)), variant(RequiredText(ad.variant)) {}

    API::AdType type;
    std::wstring product;
    std::wstring name;
    std::wstring variant;
};

/// A form or a report. Malformed details make `org` an empty text, which is refused.
struct Form {
    explicit Form(const lumeq_form& form)
        : code(RequiredText(form.code_name)), name(RequiredText(form.name)),
          version(RequiredText(form.version)), context(form.local_context, form.global_context) {
        if (auto fields = ReadDictionary(form.details)) {
            org = RequiredText(form.org_name);
            details = std::move(*fields);
        }
    }

    std::wstring org;
    std::wstring code;
    std::wstring name;
    std::wstring version;
    API::StringDictionary details;
    Context context;
};

} // namespace Zuvan::Lumeq
