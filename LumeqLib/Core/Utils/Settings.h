// The settings: a factory file beside the host that is read only, and a local file of the machine's that is
// read and written. Each key is read from exactly one of them. Includes windows.h: for source files only.
//
// Every use reads both files afresh:
//
//     const std::shared_ptr<Settings> settings = Settings::GetInstance();
//     ... read; or change and SaveLocalSettings() ...
//     DropSharedInstance();
//     ... `settings` goes out of scope, outside the settings lock, and the instance dies with it.
#pragma once

#include "Common/SystemHandles.h"
#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <memory>
#include <mutex>
#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Guards the creation and the death of the instance. Not recursive, and ~Settings takes it: the last
/// reference must never drop under it.
std::mutex& SettingsLock() noexcept;

/// Gives up the shared reference. The caller holds the settings lock, and a reference of its own.
void ReleaseSettingsInstance() noexcept;

/// ReleaseSettingsInstance under the settings lock. The caller does not hold the lock.
void DropSharedInstance();

/// COM is initialised on the creating thread for the life of an instance, so the same thread has to let it
/// go. One that a failure left behind can die on another thread: COM stays initialised on the creating one
/// then, and the other one's is left alone. The lock guards neither documents nor fields: one thread uses an
/// instance at a time.
///
/// Keys are plain element names: they are used as query texts. A failed call on a document raises
/// `_com_error`.
class Settings {
    struct Creation {};

public:
    /// Loads both files, if there is no instance, under the settings lock. Throws FileNotFoundException,
    /// FileFormatException, ComException, VestoException or `_com_error`.
    static std::shared_ptr<Settings> GetInstance();

    /// For GetInstance.
    Settings(Creation, XmlDocumentPointer factoryDocument, XmlDocumentPointer localDocument) noexcept;
    /// Takes the settings lock.
    virtual ~Settings();
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;

    /// The default is for a missing key only: one without text gives the empty text.
    std::wstring GetFactorySetting(const std::wstring& key, const std::wstring& defaultValue) const;
    std::wstring GetLocalSetting(const std::wstring& key, const std::wstring& defaultValue) const;

    /// In memory only.
    void SetLocalSetting(const std::wstring& key, const std::wstring& value);

    /// In memory only. False if there is no such key. Does not count as a change for IsLocalDirty.
    bool RemoveLocalSetting(const std::wstring& key);

    /// Writes the local file, whether or not it was changed, and gives true.
    bool SaveLocalSettings();

    /// Whether SetLocalSetting changed anything that is not saved.
    bool IsLocalDirty() const noexcept { return _localDirty; }

private:
    static std::shared_ptr<Settings> Load();

    XmlDocumentPointer _factoryDocument;
    XmlDocumentPointer _localDocument;
    bool _localDirty = false;
    DWORD _creatingThreadId;
    // Keeps the number from being given to another thread.
    Common::UniqueKernelObject _creatingThread;
};

} // namespace Zuvan::Lumeq::Core::Utils
