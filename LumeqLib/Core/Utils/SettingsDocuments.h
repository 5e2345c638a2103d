// Loading the two settings files. COM must be initialised on the calling thread. Besides what is told here,
// a failed call on a document raises `_com_error`.
#pragma once

#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Throws FileNotFoundException, ComException or FileFormatException.
XmlDocumentPointer LoadFactoryDocument(const std::wstring& path);

/// What a loaded factory document must have: a root of any name, of the one version. Throws
/// FileFormatException. `path` is for its text.
void CheckFactoryDocument(IXMLDOMDocument& document, const std::wstring& path);

/// A new document if there is no such file. An older root is given the present name, in memory only. Throws
/// ComException or FileFormatException.
XmlDocumentPointer LoadLocalDocument(const std::wstring& path);

} // namespace Zuvan::Lumeq::Core::Utils
