#include "tools/companion/LocalSettings.h"

#include <windows.h>

#include <comdef.h>
#include <filesystem>
#include <msxml.h>
#include <shlobj.h>
#include <stdexcept>
#include <wrl/client.h>

namespace Companion {

namespace {

using Microsoft::WRL::ComPtr;

constexpr CLSID DomDocument30 = {
    0xf5078f32, 0xc551, 0x11d3, {0x89, 0xb9, 0x00, 0x00, 0xf8, 0x1f, 0xe2, 0x21}};

std::wstring& Subfolder() {
    static std::wstring subfolder;
    return subfolder;
}

void Check(HRESULT result) {
    if (FAILED(result))
        throw _com_error(result);
}

/// COM on this thread, in whatever apartment the thread is.
class ComApartment {
public:
    ComApartment() : _result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComApartment() {
        if (SUCCEEDED(_result))
            CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

private:
    HRESULT _result;
};

std::filesystem::path SettingsFile() {
    wchar_t folder[MAX_PATH] = {};
    Check(SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder));
    // A subfolder that begins with a backslash starts at the drive's root, as in Lumeq.dll.
    return std::filesystem::path(folder) / L"Zuvan" / Subfolder() / L"LUMEQ" / L"LumeqLocalSettings.xml";
}

ComPtr<IXMLDOMDocument> NewDocument() {
    ComPtr<IXMLDOMDocument> document;
    Check(CoCreateInstance(DomDocument30, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                           reinterpret_cast<void**>(document.GetAddressOf())));
    Check(document->put_async(VARIANT_FALSE));
    Check(document->put_resolveExternals(VARIANT_FALSE));
    return document;
}

ComPtr<IXMLDOMDocument> EmptyDocument() {
    ComPtr<IXMLDOMDocument> document = NewDocument();
    ComPtr<IXMLDOMElement> root;
    Check(document->createElement(_bstr_t(L"LumeqConfig"), &root));
    Check(root->setAttribute(_bstr_t(L"version"), _variant_t(L"4.0")));
    Check(document->appendChild(root.Get(), nullptr));
    return document;
}

/// Wine saves as UTF-8 whatever encoding the declaration names, so the file would be misread from then on.
void DropDeclaration(IXMLDOMDocument& document) {
    ComPtr<IXMLDOMNode> first;
    Check(document.get_firstChild(&first));
    _bstr_t name;
    if (first)
        Check(first->get_nodeName(name.GetAddress()));
    if (name == _bstr_t(L"xml"))
        Check(document.removeChild(first.Get(), nullptr));
}

ComPtr<IXMLDOMDocument> LoadDocument(const std::filesystem::path& path) {
    if (!std::filesystem::exists(path))
        return EmptyDocument();
    ComPtr<IXMLDOMDocument> document = NewDocument();
    VARIANT_BOOL loaded = VARIANT_FALSE;
    Check(document->load(_variant_t(path.c_str()), &loaded));
    if (loaded != VARIANT_TRUE)
        throw std::runtime_error("the local settings file is damaged");
    DropDeclaration(*document.Get());
    return document;
}

ComPtr<IXMLDOMElement> Root(IXMLDOMDocument& document) {
    ComPtr<IXMLDOMElement> root;
    Check(document.get_documentElement(&root));
    if (!root)
        throw std::runtime_error("the local settings file has no root element");
    return root;
}

/// Null if there is none.
ComPtr<IXMLDOMNode> FindNode(IXMLDOMElement& root, const std::wstring& key) {
    ComPtr<IXMLDOMNode> node;
    Check(root.selectSingleNode(_bstr_t(key.c_str()), &node));
    return node;
}

} // namespace

void UseSubfolder(const std::wstring& path) { Subfolder() = path; }

std::wstring ReadSetting(const std::wstring& key) {
    const ComApartment apartment;
    const ComPtr<IXMLDOMDocument> document = LoadDocument(SettingsFile());
    const ComPtr<IXMLDOMNode> node = FindNode(*Root(*document.Get()).Get(), key);
    if (!node)
        return {};
    _bstr_t text;
    Check(node->get_text(text.GetAddress()));
    return text.length() == 0 ? std::wstring() : std::wstring(text);
}

void WriteSetting(const std::wstring& key, const std::wstring& value) {
    const ComApartment apartment;
    const std::filesystem::path path = SettingsFile();
    const ComPtr<IXMLDOMDocument> document = LoadDocument(path);
    const ComPtr<IXMLDOMElement> root = Root(*document.Get());
    ComPtr<IXMLDOMNode> node = FindNode(*root.Get(), key);
    if (!node) {
        ComPtr<IXMLDOMElement> element;
        Check(document->createElement(_bstr_t(key.c_str()), &element));
        Check(root->appendChild(element.Get(), &node));
    }
    Check(node->put_text(_bstr_t(value.c_str())));
    std::filesystem::create_directories(path.parent_path());
    Check(document->save(_variant_t(path.c_str())));
}

} // namespace Companion
