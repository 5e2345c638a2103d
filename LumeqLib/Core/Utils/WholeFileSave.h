// Saving a document such that its file is whole at every moment.
#pragma once

#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Saves to a neighbour of the file and puts that in the file's place in one step, with the file's access
/// rights. A failure leaves the file as it was and no neighbour, and raises `_com_error`. What a process that
/// died meanwhile has left is removed by a later save.
void SaveWholeFile(IXMLDOMDocument& document, const std::wstring& path);

} // namespace Zuvan::Lumeq::Core::Utils
