#include "LumeqLib/Core/Utils/SettingsDocuments.h"

#include "Common/Exceptions.h"
#include "Common/Paths.h"
#include "LumeqLib/Core/Utils/AtomicFile.h"

namespace Zuvan::Lumeq::Core::Utils {

using Common::FileFormatException;

namespace {

constexpr wchar_t RootName[] = L"LumeqConfig";
constexpr wchar_t OlderRootName[] = L"LUMConfig";
constexpr wchar_t VersionName[] = L"version";
constexpr wchar_t Version[] = L"4.0";

void ReadLocalFile(IXMLDOMDocument& document, const std::wstring& path) {
    if (!LoadWithRetry(document, path))
        throw FileFormatException(path, L"Error parsing local settings file");
    DropForeignEncoding(document);
    const XmlElementPointer root = RootElement(document);
    if (TagName(*root.Get()) == OlderRootName)
        ReplaceRoot(*root.Get(), *CreateXmlElement(document, RootName).Get());
}

void StartLocalDocument(IXMLDOMDocument& document) {
    const XmlElementPointer root = CreateXmlElement(document, RootName);
    SetAttribute(*root.Get(), VersionName, Version);
    AppendChild(document, *root.Get());
}

} // namespace

XmlDocumentPointer LoadFactoryDocument(const std::wstring& path) {
    if (!Common::Exists(path))
        throw Common::FileNotFoundException(path, L"Factory settings file not found");
    XmlDocumentPointer document = CreateXmlDocument();
    if (!LoadXml(*document.Get(), path))
        throw FileFormatException(path, L"Error parsing factory settings file");
    CheckFactoryDocument(*document.Get(), path);
    return document;
}

void CheckFactoryDocument(IXMLDOMDocument& document, const std::wstring& path) {
    const XmlElementPointer root = RootElement(document);
    if (!root)
        throw FileFormatException(path, L"Expected root element not found in factory settings file");
    const std::wstring version = Attribute(*root.Get(), VersionName);
    if (version != Version)
        throw FileFormatException(path, std::wstring(L"Factory settings version mismatch; expected: '") +
                                            Version + L"', actual: '" + version + L"'");
}

XmlDocumentPointer LoadLocalDocument(const std::wstring& path) {
    XmlDocumentPointer document = CreateXmlDocument();
    if (Common::Exists(path))
        ReadLocalFile(*document.Get(), path);
    else
        StartLocalDocument(*document.Get());
    return document;
}

} // namespace Zuvan::Lumeq::Core::Utils
