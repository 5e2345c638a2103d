// One COM apartment for all operations of an export, because entering and leaving one takes longer than most
// of them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

struct IUnknown;

namespace Zuvan::Lumeq::Common {

struct InterfaceReleaser {
    void operator()(::IUnknown* instance) const noexcept;
};

/// What one operation in the apartment leaves to the next.
struct ApartmentCache {
    std::unique_ptr<::IUnknown, InterfaceReleaser> documentFactory; ///< The IClassFactory of the settings.
    std::wstring allUsersFolder;
};

/// While one lives, the last operation of its thread does not undo COM. Suspend or the end of the session
/// does. An operation that comes before that finds COM initialised and gets the result of the first one. So
/// the log's lines and all results are the same as without a session.
///
/// One at a time, only under the API lock. Other threads are not affected.
class ComSession {
public:
    ComSession() noexcept;
    ~ComSession();
    ComSession(const ComSession&) = delete;
    ComSession& operator=(const ComSession&) = delete;

    /// Undoes COM now if only the session keeps it: foreign code and long waits must not find the apartment.
    /// No effect without a session on the calling thread.
    static void Suspend() noexcept;

    /// Null unless an operation of the calling thread has initialised COM in a session. Emptied before COM is
    /// undone.
    static ApartmentCache* Cache() noexcept;

    /// For ComInitCounted: calls `initialize`, or returns the result of the initialisation that is kept.
    template <class Initialize>
    static std::int32_t Enter(Initialize initialize) {
        ComSession* const session = OfThisThread();
        if (session && session->_isKept)
            return session->Resume();
        const std::int32_t result = initialize();
        if (session && result >= 0)
            session->Entered(result);
        return result;
    }

    /// For ComUninitCounted: undoes COM, or keeps it.
    static void Leave() noexcept;

private:
    static ComSession* OfThisThread() noexcept;

    std::int32_t Resume() noexcept;
    void Entered(std::int32_t result) noexcept;
    void Undo() noexcept;

    std::int32_t _firstResult = 0;
    int _operations = 0; ///< Initialisations that no operation has undone.
    bool _isKept = false;
    ApartmentCache _cache;
};

} // namespace Zuvan::Lumeq::Common
