// The settings: a read-only factory file beside the host, and a local file of the machine that is read and
// written. Each key is read from exactly one of them. Every use, by WithSettings, reads both files afresh.
// Includes windows.h: for source files only.
#pragma once

#include "Common/Mutex.h"
#include "Common/SystemHandles.h"
#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

namespace Zuvan::Lumeq::Core::Utils {

/// Guards the creation and destruction of the instance. Not recursive, and ~Settings takes it, so the last
/// reference must never drop while it is held.
Common::Mutex& SettingsLock() noexcept;

/// Drops the shared reference. The caller holds the settings lock and a reference of its own.
void ReleaseSettingsInstance() noexcept LUMEQ_REQUIRES(SettingsLock());

/// Calls ReleaseSettingsInstance under the settings lock, which the caller does not hold.
void DropSharedInstance() LUMEQ_EXCLUDES(SettingsLock());

/// COM is initialised on the creating thread for the life of an instance, so the same thread must drop it. An
/// instance that a failure left behind can die on another thread: COM then stays initialised on the creating
/// thread, and the other thread's is left alone. The lock guards neither documents nor fields: only one
/// thread uses an instance at a time.
///
/// Keys are plain element names, because they become query texts. A failed call on a document raises
/// `_com_error`.
class Settings {
    struct Creation {};

public:
    /// Loads both files under the settings lock if there is no instance. Throws FileNotFoundException,
    /// FileFormatException, ComException, VestoException or `_com_error`.
    static std::shared_ptr<Settings> GetInstance() LUMEQ_EXCLUDES(SettingsLock());

    /// For GetInstance.
    Settings(Creation, XmlDocumentPointer factoryDocument, XmlDocumentPointer localDocument) noexcept;
    /// Takes the settings lock.
    virtual ~Settings() LUMEQ_EXCLUDES(SettingsLock());
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// The default is for a missing key only; a key without text has the empty text.
    std::wstring GetFactorySetting(const std::wstring& key, const std::wstring& defaultValue) const;
    std::wstring GetLocalSetting(const std::wstring& key, const std::wstring& defaultValue) const;

    /// In memory only.
    void SetLocalSetting(const std::wstring& key, const std::wstring& value);

    /// In memory only. Returns false if there is no such key. IsLocalDirty does not count this as a change.
    bool RemoveLocalSetting(const std::wstring& key);

    /// Writes the local file, changed or not, and returns true.
    bool SaveLocalSettings();

    /// Whether SetLocalSetting made a change that is not saved.
    bool IsLocalDirty() const noexcept { return _localDirty; }

private:
    static std::shared_ptr<Settings> Load() LUMEQ_REQUIRES(SettingsLock());

    XmlDocumentPointer _factoryDocument;
    XmlDocumentPointer _localDocument;
    bool _localDirty = false;
    DWORD _creatingThreadId;
    // Keeps the system from reusing the number for another thread.
    Common::UniqueKernelObject _creatingThread;
};

/// One use of the settings: takes the instance, runs `work` on it, drops the shared reference and returns
/// what `finish` makes of the work's result. The instance dies after `finish`, so the lines that `finish`
/// logs come before those of its end. A use that throws leaves its instance to the next one.
template <class Work, class Finish = std::identity>
auto WithSettings(Work work, Finish finish = {},
                  std::shared_ptr<Settings> settings = Settings::GetInstance()) {
    auto result = work(*settings);
    DropSharedInstance();
    return finish(std::move(result));
}

} // namespace Zuvan::Lumeq::Core::Utils
