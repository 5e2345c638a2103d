// The frame of every exported function: the lock, the tracking gate, the catch clauses and the report of a
// failure.
#pragma once

#include "Common/ComSession.h"
#include "Common/Logger.h"
#include "Common/TrackingGate.h"
#include "LumeqApi/ApiMutex.h"

#include <cstddef>
#include <exception>
#include <iterator>
#include <mutex>
#include <string>
#include <type_traits>

namespace Zuvan::Lumeq::API {

/// Serialises the exported calls. It is the outermost lock, and each export holds it from beginning to end.
/// It is not recursive, so no export may call another. A host can call one export from inside another on the
/// same thread, for example from a message hook that COM runs while it waits; that call gets the lock's
/// exception instead of a deadlock.
extern ApiMutex ApiLock;

/// The name of an export, without its namespace: a literal.
class ExportName {
public:
    template <std::size_t Size>
    consteval ExportName(const wchar_t (&name)[Size]) : _plain(name) {
        static_assert(Size <= Longest);
    }

    const wchar_t* Plain() const noexcept { return _plain; }

    static constexpr std::size_t Longest = 40; ///< With its zero.

private:
    const wchar_t* _plain;
};

/// The name of an export with its namespace, as the log shows it. Made for a line only, so that a call that
/// writes none does not pay for it, and on the stack, so that a report needs no memory for it.
class QualifiedName {
public:
    explicit QualifiedName(ExportName name) noexcept;

    const wchar_t* Text() const noexcept { return _text; }

private:
    static constexpr wchar_t Namespace[] = L"Zuvan::Lumeq::API::";

    wchar_t _text[std::size(Namespace) + ExportName::Longest];
};

/// Where every failure of the exported layer ends: one line at ERROR, and a stop in an attached debugger, so
/// that a developer sees a bad argument where it is passed. Every report names `LumeqApi` as its source file,
/// whichever file found the failure.
void ReportValidationError(const wchar_t* title, const std::wstring& detail, const wchar_t* function,
                           int line);

/// One exported call, which logs and reports under the name of its export.
class Call {
public:
    explicit Call(ExportName name) noexcept : _name(name) {}
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    /// False if a line at TRACE would be dropped, so that nothing is rendered for it.
    bool IsTraced() const noexcept { return Common::IsLogged(Common::SeverityLevel::TRACE); }

    /// Takes its arguments as printf does.
    template <class... Values>
    void Log(Common::SeverityLevel level, const wchar_t* format, Values... values) const {
        Common::LogMessage(level, L"LumeqApi", __LINE__, QualifiedName(_name).Text(), format, values...);
    }

    /// Reports a failed check. Always false.
    bool Refuse(const std::wstring& detail, int line = __builtin_LINE()) const;

private:
    ExportName _name;
};

/// These report what an export's body threw. The report itself allocates, and its failure must not reach the
/// host either.
void ReportException(ExportName name, const std::exception& exception) noexcept;
void ReportUnknownException(ExportName name) noexcept;

/// Runs the body of the export `name` under the lock, behind the tracking gate and in one COM session. The
/// body is a callable that takes a const Call&. Returns a value-initialised result if tracking is disabled or
/// the body throws. Throws std::system_error if the lock fails, std::bad_alloc if there is no memory for
/// that, and nothing else.
template <class Body>
auto RunExport(ExportName name, Body body) -> std::invoke_result_t<Body, const Call&> {
    // Once tracking is known to be disabled, nobody has to wait for the lock to hear it again.
    if (Common::IsTrackingKnownDisabled())
        return std::invoke_result_t<Body, const Call&>();
    const std::lock_guard lock(ApiLock);
    try {
        if (!Common::IsTrackingDisabled()) {
            const Common::ComSession session;
            return body(Call(name));
        }
    } catch (const std::exception& exception) {
        ReportException(name, exception);
    } catch (...) {
        ReportUnknownException(name);
    }
    return std::invoke_result_t<Body, const Call&>();
}

} // namespace Zuvan::Lumeq::API
