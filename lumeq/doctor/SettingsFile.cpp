#include "lumeq/doctor/SettingsFile.h"

#include "Common/ComError.h"
#include "Common/Exceptions.h"
#include "Common/Paths.h"
#include "LumeqLib/Core/Utils/SettingsDocuments.h"
#include "lumeq/doctor/Texts.h"

#include <algorithm>

namespace Zuvan::Lumeq::Tool::Doctor {

namespace {

using namespace Core::Utils;

std::vector<Setting> SettingsIn(IXMLDOMDocument& document) {
    std::vector<Setting> settings;
    XmlNodePointer child;
    ThrowIfFailed(RootElement(document)->get_firstChild(&child));
    while (child) {
        DOMNodeType type = NODE_INVALID;
        ThrowIfFailed(child->get_nodeType(&type));
        if (type == NODE_ELEMENT)
            settings.push_back({NodeName(*child.Get()), NodeText(*child.Get())});
        XmlNodePointer next;
        ThrowIfFailed(child->get_nextSibling(&next));
        child = next;
    }
    return settings;
}

template <class Load>
SettingsFile Read(const std::wstring& path, Load load) {
    SettingsFile file{path, Common::Exists(path), {}, {}};
    if (!file.exists)
        return file;
    try {
        file.settings = SettingsIn(*load(path).Get());
    } catch (const Common::VestoException& refusal) {
        file.refusal = refusal.what();
    } catch (const _com_error& refusal) {
        file.refusal = Utf8(Common::ComErrorText(refusal.Error()));
    }
    return file;
}

} // namespace

std::optional<std::wstring> SettingsFile::Find(const std::wstring& key) const {
    const auto found = std::find_if(settings.begin(), settings.end(),
                                    [&key](const Setting& setting) { return setting.key == key; });
    return found == settings.end() ? std::nullopt : std::optional(found->value);
}

SettingsFile ReadFactoryFile(const std::wstring& path) { return Read(path, LoadFactoryDocument); }
SettingsFile ReadLocalFile(const std::wstring& path) { return Read(path, LoadLocalDocument); }

} // namespace Zuvan::Lumeq::Tool::Doctor
