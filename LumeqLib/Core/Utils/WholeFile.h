// Loading and saving a document in a file that other processes use at the same time.
#pragma once

#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// LoadXml, which does not wait for a file that somebody is writing: this does, for 200 ms. Others cannot
/// write the file as long as LoadXml itself has it open, and while it is waited for; otherwise they are not
/// disturbed.
bool LoadWholeFile(IXMLDOMDocument& document, const std::wstring& path);

/// Saves such that the file is whole at every moment: to a neighbour first, which then, flushed to the disk,
/// takes the file's place in one step, with the access rights that the file had. Waits for a process that has
/// the file open, for 200 ms. What a process that died meanwhile has left is removed by a later save.
///
/// Where no neighbour can be made or the file cannot be replaced, but written, it is written in its place:
/// then it is not whole until that is done, and not at all if the process dies or the disk is full.
///
/// A failure raises `_com_error`, and leaves no neighbour and, but for a failure of writing in place, the
/// file as it was.
void SaveWholeFile(IXMLDOMDocument& document, const std::wstring& path);

} // namespace Zuvan::Lumeq::Core::Utils
