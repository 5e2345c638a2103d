// Loading the two settings files. COM must be initialised on the calling thread. Besides the exceptions named
// here, a failed call on a document raises `_com_error`.
#pragma once

#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Throws FileNotFoundException, ComException or FileFormatException.
XmlDocumentPointer LoadFactoryDocument(const std::wstring& path);

/// Throws FileFormatException, with `path` in its text, unless the document has a root, of any name, whose
/// version is the supported one.
void CheckFactoryDocument(IXMLDOMDocument& document, const std::wstring& path);

/// Returns a new document if there is no such file. Renames a root of the older name, in memory only. Throws
/// ComException or FileFormatException.
XmlDocumentPointer LoadLocalDocument(const std::wstring& path);

} // namespace Zuvan::Lumeq::Core::Utils
