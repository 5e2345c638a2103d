#include "LumeqLib/Core/Utils/Settings.h"

#include "Common/ComScope.h"
#include "Common/Debugger.h"
#include "Common/Exceptions.h"
#include "Common/Logger.h"
#include "LumeqLib/Core/Utils/AtomicFile.h"
#include "LumeqLib/Core/Utils/SettingsDocuments.h"
#include "LumeqLib/Core/Utils/SettingsPaths.h"

#include <utility>

namespace Zuvan::Lumeq::Core::Utils {

namespace {

const std::wstring GetInstanceName = L"Zuvan::Lumeq::Core::Utils::Settings::GetInstance";
const std::wstring DestructorName = L"Zuvan::Lumeq::Core::Utils::Settings::~Settings";
constexpr wchar_t CreationFailed[] = L"ERROR: Fail creating Settings class: ";

Common::Mutex settingsLock;

// Never destroyed: unloading must not release an instance that a failure left behind, because COM must not be
// called under the loader lock.
union SharedInstance {
    constexpr SharedInstance() : pointer() {}
    ~SharedInstance() {}
    std::shared_ptr<Settings> pointer;
};
constinit SharedInstance sharedInstance LUMEQ_GUARDED_BY(SettingsLock());

/// While one exists, it holds the lock and keeps this thread's logging from loading the policy, which would
/// take the lock again.
class LUMEQ_SCOPED_CAPABILITY LockedSettings {
public:
    LockedSettings() LUMEQ_ACQUIRE(SettingsLock()) { SettingsLock().lock(); }
    ~LockedSettings() LUMEQ_RELEASE() { SettingsLock().unlock(); }
    LockedSettings(const LockedSettings&) = delete;
    LockedSettings& operator=(const LockedSettings&) = delete;

private:
    Common::FirstUseDeferral _deferral;
};

Common::UniqueKernelObject OpenThisThread() noexcept {
    return Common::UniqueKernelObject(OpenThread(SYNCHRONIZE, FALSE, GetCurrentThreadId()));
}

XmlElementPointer RootOf(const XmlDocumentPointer& document) {
    XmlElementPointer root = RootElement(*document.Get());
    // Loading has checked that there is one.
    if (!root)
        ThrowIfFailed(E_UNEXPECTED);
    return root;
}

XmlNodePointer FindSetting(const XmlDocumentPointer& document, const std::wstring& key) {
    return FindNode(*RootOf(document).Get(), key);
}

// The debugger receives this, not the log, because the log itself reads settings.
void ReportMissing(const wchar_t* kind, const std::wstring& key) {
    Common::TraceToDebugger(std::wstring(L"TRACE: Unable to get value of ") + kind + L" setting '" + key +
                            L"'\n");
}

std::wstring ReadSetting(const XmlDocumentPointer& document, const wchar_t* kind, const std::wstring& key,
                         const std::wstring& defaultValue) {
    if (const XmlNodePointer node = FindSetting(document, key))
        return NodeText(*node.Get());
    ReportMissing(kind, key);
    return defaultValue;
}

void AddSetting(const XmlDocumentPointer& document, const std::wstring& key, const std::wstring& value) {
    const XmlNodePointer node = CreateElementNode(*document.Get(), key);
    SetNodeText(*node.Get(), value);
    AppendChild(*RootOf(document).Get(), *node.Get());
}

} // namespace

Common::Mutex& SettingsLock() noexcept { return settingsLock; }

void ReleaseSettingsInstance() noexcept { sharedInstance.pointer.reset(); }

void DropSharedInstance() {
    // Declared before the lock, so that the last reference dies after the lock is released.
    std::shared_ptr<Settings> instance;
    const Common::MutexScope scope(SettingsLock());
    instance = sharedInstance.pointer;
    ReleaseSettingsInstance();
}

std::shared_ptr<Settings> Settings::GetInstance() {
    const LockedSettings locked;
    if (!sharedInstance.pointer)
        sharedInstance.pointer = Load();
    return sharedInstance.pointer;
}

std::shared_ptr<Settings> Settings::Load() {
    Common::ComScope com(GetInstanceName);
    if (com.Result() < 0)
        throw Common::ComException(L"Failed to CoInitialize", com.Result());
    try {
        XmlDocumentPointer factoryDocument = LoadFactoryDocument(FindFactorySettingsPath());
        XmlDocumentPointer localDocument = LoadLocalDocument(FindLocalSettingsPath());
        auto instance =
            std::make_shared<Settings>(Creation{}, std::move(factoryDocument), std::move(localDocument));
        com.Release();
        return instance;
    } catch (...) {
        Common::ReportCaughtToDebugger(CreationFailed);
        throw;
    }
}

Settings::Settings(Creation, XmlDocumentPointer factoryDocument, XmlDocumentPointer localDocument) noexcept
    : _factoryDocument(std::move(factoryDocument)), _localDocument(std::move(localDocument)),
      _creatingThreadId(GetCurrentThreadId()), _creatingThread(OpenThisThread()) {}

Settings::~Settings() {
    const LockedSettings locked;
    _factoryDocument.Reset();
    _localDocument.Reset();
    // Do not undo COM on another thread: its initialisation may be the host's.
    if (GetCurrentThreadId() == _creatingThreadId)
        Common::ComUninitCounted(DestructorName);
}

std::wstring Settings::GetFactorySetting(const std::wstring& key, const std::wstring& defaultValue) const {
    return ReadSetting(_factoryDocument, L"factory", key, defaultValue);
}

std::wstring Settings::GetLocalSetting(const std::wstring& key, const std::wstring& defaultValue) const {
    return ReadSetting(_localDocument, L"local", key, defaultValue);
}

void Settings::SetLocalSetting(const std::wstring& key, const std::wstring& value) {
    if (const XmlNodePointer node = FindSetting(_localDocument, key)) {
        _localDirty = _localDirty || NodeText(*node.Get()) != value;
        SetNodeText(*node.Get(), value);
    } else {
        _localDirty = true;
        AddSetting(_localDocument, key, value);
    }
}

bool Settings::RemoveLocalSetting(const std::wstring& key) {
    const XmlNodePointer node = FindSetting(_localDocument, key);
    if (!node) {
        ReportMissing(L"local", key);
        return false;
    }
    RemoveChild(*RootOf(_localDocument).Get(), *node.Get());
    return true;
}

bool Settings::SaveLocalSettings() {
    SaveAtomically(*_localDocument.Get(), FindLocalSettingsPath());
    _localDirty = false;
    return true;
}

} // namespace Zuvan::Lumeq::Core::Utils
