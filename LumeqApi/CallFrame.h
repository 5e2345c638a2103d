// The frame of every exported function, and what its body works with.
#pragma once

#include "Common/Logger.h"
#include "Common/TrackingGate.h"
#include "LumeqApi/ApiMutex.h"
#include "LumeqApi/LoggedArgument.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <mutex>
#include <string>
#include <type_traits>

namespace Zuvan::Lumeq::API {

/// Serialises the exported calls; the outermost lock, held for the whole of each. Not recursive: no export
/// may call another, and a host that calls one from inside another on the same thread, as a message hook can
/// that COM runs while it waits, gets the lock's failure instead of waiting for itself.
extern ApiMutex ApiLock;

/// The qualified name of an export, composed at compile time from the plain one.
class ExportName {
public:
    template <std::size_t Size>
    consteval ExportName(const wchar_t (&name)[Size]) {
        std::copy_n(name, Size, std::copy(std::begin(Namespace), std::end(Namespace) - 1, _text));
    }

    const wchar_t* Text() const noexcept { return _text; }

private:
    static constexpr wchar_t Namespace[] = L"Zuvan::Lumeq::API::";

    wchar_t _text[64] = {};
};

/// One exported call: its name and the verdict on its arguments. Every check runs and records its own
/// failure, so none can be skipped for another's sake.
class Call {
public:
    explicit Call(const ExportName& name) noexcept : _name(name.Text()) {}
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    /// Logs the export's arguments, each rendered by its type. Renders nothing when the line would be
    /// dropped.
    template <class... Arguments>
    void Trace(const wchar_t* format, const Arguments&... arguments) const {
        if (Common::IsLogged(Common::SeverityLevel::TRACE))
            Log(Common::SeverityLevel::TRACE, format, PrintfArgument(Render(arguments))...);
    }

    /// Logs under the export's name, with arguments as printf takes them.
    template <class... Arguments>
    void Log(Common::SeverityLevel level, const wchar_t* format, Arguments... arguments) const {
        Common::LogMessage(level, SourceFile, __LINE__, _name, format, arguments...);
    }

    void Required(const std::wstring& value, const wchar_t* argName, const Common::Pattern& pattern,
                  int line = __builtin_LINE());
    void Optional(const wchar_t* value, const wchar_t* argName, const Common::Pattern& pattern,
                  int line = __builtin_LINE());

    /// A check written out by hand has failed.
    void Reject(const std::wstring& detail, int line = __builtin_LINE());

    /// The same, but the call goes on as if it had not.
    void Complain(const std::wstring& detail, int line = __builtin_LINE()) const;

    bool Failed() const noexcept { return _failed; }

private:
    const wchar_t* _name;
    bool _failed = false;
};

/// Report what an export's body threw. Reporting allocates, and a host must not see that fail either.
void ReportException(const ExportName& name, const std::exception& exception) noexcept;
void ReportUnknownException(const ExportName& name) noexcept;

/// Runs the body of the export `name`, a callable that takes a Call&, under the lock and behind the tracking
/// gate. Where tracking is disabled or the body throws, gives a value-initialised result. Throws
/// std::system_error if the lock fails, std::bad_alloc where there is no memory for that, and nothing else.
template <class Body>
auto RunExport(const ExportName& name, Body body) -> std::invoke_result_t<Body, Call&> {
    const std::lock_guard lock(ApiLock);
    try {
        if (!Common::IsTrackingDisabled()) {
            Call call(name);
            return body(call);
        }
    } catch (const std::exception& exception) {
        ReportException(name, exception);
    } catch (...) {
        ReportUnknownException(name);
    }
    return std::invoke_result_t<Body, Call&>();
}

} // namespace Zuvan::Lumeq::API
