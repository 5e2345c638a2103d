// The calls on an XML document that the settings need. Each raises `_com_error` if it fails. COM must be
// initialised on the calling thread. Includes windows.h: for source files only.
#pragma once

#include <windows.h>

#include <comdef.h>
#include <msxml2.h>
#include <string>
#include <wrl/client.h>

namespace Zuvan::Lumeq::Core::Utils {

using XmlDocumentPointer = Microsoft::WRL::ComPtr<IXMLDOMDocument>;
using XmlElementPointer = Microsoft::WRL::ComPtr<IXMLDOMElement>;
using XmlNodePointer = Microsoft::WRL::ComPtr<IXMLDOMNode>;

void ThrowIfFailed(HRESULT result);

/// An empty document that loads synchronously and reads nothing outside its file. Throws ComException.
XmlDocumentPointer CreateXmlDocument();

/// Returns false for a file that cannot be read, is not well-formed, or has a document type: a settings file
/// needs none, and its declarations could take unbounded time or read other files. Locks out no other
/// process.
bool LoadXml(IXMLDOMDocument& document, const std::wstring& path);

/// Removes an XML declaration that names an encoding other than UTF-8, so that the document is saved in
/// UTF-8. Some implementations would save it in UTF-8 anyway, but leave the wrong name in the declaration.
void DropForeignEncoding(IXMLDOMDocument& document);

/// Writes to the file directly.
void SaveXml(IXMLDOMDocument& document, const std::wstring& path);

/// What SaveXml would write.
std::string XmlContent(IXMLDOMDocument& document);

/// Null if the document is empty.
XmlElementPointer RootElement(IXMLDOMDocument& document);
std::wstring TagName(IXMLDOMElement& element);

/// Empty if the element has no such attribute.
std::wstring Attribute(IXMLDOMElement& element, const std::wstring& name);
void SetAttribute(IXMLDOMElement& element, const std::wstring& name, const std::wstring& value);

XmlElementPointer CreateXmlElement(IXMLDOMDocument& document, const std::wstring& name);
/// An element of no namespace.
XmlNodePointer CreateElementNode(IXMLDOMDocument& document, const std::wstring& name);
void AppendChild(IXMLDOMNode& parent, IXMLDOMNode& child);
void RemoveChild(IXMLDOMNode& parent, IXMLDOMNode& child);

/// Moves the children of the old root to the new one, copies the attributes, and replaces the old root by the
/// new one.
void ReplaceRoot(IXMLDOMElement& oldRoot, IXMLDOMElement& newRoot);

/// Null if nothing is found.
XmlNodePointer FindNode(IXMLDOMNode& root, const std::wstring& query);
std::wstring NodeName(IXMLDOMNode& node);
std::wstring NodeText(IXMLDOMNode& node);
void SetNodeText(IXMLDOMNode& node, const std::wstring& text);

} // namespace Zuvan::Lumeq::Core::Utils
