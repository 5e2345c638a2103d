#include "LumeqLib/Core/Utils/XmlDocument.h"

#include "Common/ComSession.h"
#include "Common/Exceptions.h"
#include "Common/SystemHandles.h"
#include "Common/Text.h"

namespace Zuvan::Lumeq::Core::Utils {

namespace {

using Microsoft::WRL::ComPtr;

// Not every toolchain's libraries define these.
constexpr CLSID DomDocument30 = {
    0xf5078f32, 0xc551, 0x11d3, {0x89, 0xb9, 0x00, 0x00, 0xf8, 0x1f, 0xe2, 0x21}};
constexpr IID DomDocument = {0x2933bf81, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};
constexpr IID DomDocument2 = {0x2933bf95, 0x7b36, 0x11d2, {0xb2, 0x0e, 0x00, 0xc0, 0x4f, 0x98, 0x3e, 0x60}};

_bstr_t ToBstr(const std::wstring& text) { return _bstr_t(text.c_str()); }

std::wstring FromBstr(const _bstr_t& text) { return {static_cast<const wchar_t*>(text), text.length()}; }

void ThrowIfNotCreated(HRESULT result) {
    if (FAILED(result))
        throw Common::ComException(L"Failed to create an instance of COM DOMDocument30 class", result);
}

/// Finding the class takes most of the time of a small document, so operations in one apartment share it.
ComPtr<IClassFactory> FindDocumentFactory() {
    Common::ApartmentCache* const cache = Common::ComSession::Cache();
    if (cache && cache->documentFactory)
        return static_cast<IClassFactory*>(cache->documentFactory.get());
    ComPtr<IClassFactory> factory;
    const HRESULT result = CoGetClassObject(DomDocument30, CLSCTX_INPROC_SERVER, nullptr, IID_IClassFactory,
                                            reinterpret_cast<void**>(factory.GetAddressOf()));
    ThrowIfNotCreated(result);
    if (cache)
        cache->documentFactory.reset(ComPtr<IClassFactory>(factory).Detach());
    return factory;
}

/// Not every implementation knows the property, so LoadXml looks for a document type as well.
void ProhibitDocumentType(IXMLDOMDocument& document) {
    ComPtr<IXMLDOMDocument2> properties;
    if (SUCCEEDED(document.QueryInterface(DomDocument2, reinterpret_cast<void**>(properties.GetAddressOf()))))
        properties->setProperty(ToBstr(L"ProhibitDTD"), _variant_t(true));
}

/// Returns false if the file cannot be read or is empty.
bool ReadBytes(const std::wstring& path, _variant_t& bytes) {
    const Common::UniqueFile file(CreateFileW(path.c_str(), GENERIC_READ,
                                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                              OPEN_EXISTING, 0, nullptr));
    LARGE_INTEGER size{};
    if (!file || !GetFileSizeEx(file.Get(), &size) || size.HighPart != 0 || size.LowPart == 0)
        return false;
    bytes.parray = SafeArrayCreateVector(VT_UI1, 0, size.LowPart);
    if (!bytes.parray)
        ThrowIfFailed(E_OUTOFMEMORY);
    bytes.vt = VT_ARRAY | VT_UI1;
    DWORD read = 0;
    return ReadFile(file.Get(), bytes.parray->pvData, size.LowPart, &read, nullptr) && read == size.LowPart;
}

bool HasDocumentType(IXMLDOMDocument& document) {
    ComPtr<IXMLDOMDocumentType> type;
    ThrowIfFailed(document.get_doctype(&type));
    return type != nullptr;
}

bool NamesForeignEncoding(const std::wstring& declaration) {
    const std::wstring text = Common::ToLower(declaration);
    return text.find(L"encoding") != std::wstring::npos && text.find(L"utf-8") == std::wstring::npos;
}

bool HasChildren(IXMLDOMNode& node) {
    VARIANT_BOOL has = VARIANT_FALSE;
    ThrowIfFailed(node.hasChildNodes(&has));
    return has != VARIANT_FALSE;
}

void MoveChildren(IXMLDOMNode& from, IXMLDOMNode& to) {
    while (HasChildren(from)) {
        XmlNodePointer child;
        ThrowIfFailed(from.get_firstChild(&child));
        AppendChild(to, *child.Get());
    }
}

void CopyAttributes(IXMLDOMElement& from, IXMLDOMElement& to) {
    ComPtr<IXMLDOMNamedNodeMap> attributes;
    ThrowIfFailed(from.get_attributes(&attributes));
    long count = 0;
    ThrowIfFailed(attributes->get_length(&count));
    for (long i = 0; i < count; ++i) {
        XmlNodePointer attribute;
        ThrowIfFailed(attributes->get_item(i, &attribute));
        _variant_t value;
        ThrowIfFailed(attribute->get_nodeValue(&value));
        ThrowIfFailed(to.setAttribute(ToBstr(NodeName(*attribute.Get())), value));
    }
}

} // namespace

void ThrowIfFailed(HRESULT result) {
    if (FAILED(result))
        throw _com_error(result);
}

XmlDocumentPointer CreateXmlDocument() {
    XmlDocumentPointer document;
    ThrowIfNotCreated(FindDocumentFactory()->CreateInstance(
        nullptr, DomDocument, reinterpret_cast<void**>(document.GetAddressOf())));
    ThrowIfFailed(document->put_async(VARIANT_FALSE));
    ThrowIfFailed(document->put_resolveExternals(VARIANT_FALSE));
    ThrowIfFailed(document->put_validateOnParse(VARIANT_FALSE));
    ProhibitDocumentType(*document.Get());
    return document;
}

bool LoadXml(IXMLDOMDocument& document, const std::wstring& path) {
    // The document would take a path for a URL, in which "%20" is a space, and with some implementations the
    // time to load would grow with the square of the file's size.
    _variant_t bytes;
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (!ReadBytes(path, bytes))
        return false;
    ThrowIfFailed(document.load(bytes, &loaded));
    return loaded != VARIANT_FALSE && !HasDocumentType(document);
}

void DropForeignEncoding(IXMLDOMDocument& document) {
    XmlNodePointer first;
    ThrowIfFailed(document.get_firstChild(&first));
    if (first && NodeName(*first.Get()) == L"xml" && NamesForeignEncoding(NodeText(*first.Get())))
        RemoveChild(document, *first.Get());
}

void SaveXml(IXMLDOMDocument& document, const std::wstring& path) {
    ThrowIfFailed(document.save(_variant_t(path.c_str())));
}

std::string XmlContent(IXMLDOMDocument& document) {
    ComPtr<IStream> stream;
    ThrowIfFailed(CreateStreamOnHGlobal(nullptr, TRUE, &stream));
    ThrowIfFailed(document.save(_variant_t(stream.Get())));
    STATSTG statistics{};
    ThrowIfFailed(stream->Stat(&statistics, STATFLAG_NONAME));
    std::string content(static_cast<std::size_t>(statistics.cbSize.QuadPart), '\0');
    ThrowIfFailed(stream->Seek({}, STREAM_SEEK_SET, nullptr));
    ULONG read = 0;
    ThrowIfFailed(stream->Read(content.data(), static_cast<ULONG>(content.size()), &read));
    content.resize(read);
    return content;
}

XmlElementPointer RootElement(IXMLDOMDocument& document) {
    XmlElementPointer root;
    ThrowIfFailed(document.get_documentElement(&root));
    return root;
}

std::wstring TagName(IXMLDOMElement& element) {
    _bstr_t name;
    ThrowIfFailed(element.get_tagName(name.GetAddress()));
    return FromBstr(name);
}

std::wstring Attribute(IXMLDOMElement& element, const std::wstring& name) {
    _variant_t value;
    ThrowIfFailed(element.getAttribute(ToBstr(name), &value));
    return value.vt == VT_BSTR ? FromBstr(_bstr_t(value.bstrVal)) : std::wstring();
}

void SetAttribute(IXMLDOMElement& element, const std::wstring& name, const std::wstring& value) {
    ThrowIfFailed(element.setAttribute(ToBstr(name), _variant_t(value.c_str())));
}

XmlElementPointer CreateXmlElement(IXMLDOMDocument& document, const std::wstring& name) {
    XmlElementPointer element;
    ThrowIfFailed(document.createElement(ToBstr(name), &element));
    return element;
}

XmlNodePointer CreateElementNode(IXMLDOMDocument& document, const std::wstring& name) {
    XmlNodePointer node;
    ThrowIfFailed(
        document.createNode(_variant_t(static_cast<long>(NODE_ELEMENT)), ToBstr(name), ToBstr(L""), &node));
    return node;
}

void AppendChild(IXMLDOMNode& parent, IXMLDOMNode& child) {
    ThrowIfFailed(parent.appendChild(&child, nullptr));
}

void RemoveChild(IXMLDOMNode& parent, IXMLDOMNode& child) {
    ThrowIfFailed(parent.removeChild(&child, nullptr));
}

void ReplaceRoot(IXMLDOMElement& oldRoot, IXMLDOMElement& newRoot) {
    MoveChildren(oldRoot, newRoot);
    CopyAttributes(oldRoot, newRoot);
    XmlNodePointer parent;
    ThrowIfFailed(oldRoot.get_parentNode(&parent));
    ThrowIfFailed(parent->replaceChild(&newRoot, &oldRoot, nullptr));
}

XmlNodePointer FindNode(IXMLDOMNode& root, const std::wstring& query) {
    XmlNodePointer node;
    ThrowIfFailed(root.selectSingleNode(ToBstr(query), &node));
    return node;
}

std::wstring NodeName(IXMLDOMNode& node) {
    _bstr_t name;
    ThrowIfFailed(node.get_nodeName(name.GetAddress()));
    return FromBstr(name);
}

std::wstring NodeText(IXMLDOMNode& node) {
    _bstr_t text;
    ThrowIfFailed(node.get_text(text.GetAddress()));
    return FromBstr(text);
}

void SetNodeText(IXMLDOMNode& node, const std::wstring& text) { ThrowIfFailed(node.put_text(ToBstr(text))); }

} // namespace Zuvan::Lumeq::Core::Utils
