// Loading and saving a document in a file that other processes use at the same time.
#pragma once

#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// LoadXml, which does not wait for a file that somebody is writing: this does, for 200 ms.
bool LoadWholeFile(IXMLDOMDocument& document, const std::wstring& path);

/// Saves such that the file is whole at every moment: to a neighbour first, which then takes the file's place
/// in one step, with its access rights. Waits for a process that has the file open, for 200 ms. A failure
/// raises `_com_error`, and leaves the file as it was and no neighbour. What a process that died meanwhile
/// has left is removed by a later save.
void SaveWholeFile(IXMLDOMDocument& document, const std::wstring& path);

} // namespace Zuvan::Lumeq::Core::Utils
