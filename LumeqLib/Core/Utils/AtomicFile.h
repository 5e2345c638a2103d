// Loading and saving a document in a file that other processes use at the same time.
#pragma once

#include "LumeqLib/Core/Utils/XmlDocument.h"

#include <string>

namespace Zuvan::Lumeq::Core::Utils {

/// Whether there is such a file, and it is marked as read-only. Saving then fails.
bool IsReadOnly(const std::wstring& path);

/// Calls LoadXml, which can meet a file that another process is still writing, and, if that fails, once more
/// after the writer has closed the file. Waits up to 200 ms for that and keeps new writers out during the
/// second attempt. Otherwise other processes are not disturbed.
bool LoadWithRetry(IXMLDOMDocument& document, const std::wstring& path);

/// Saves so that the file is complete at every moment: writes a temporary file beside it, flushes that to the
/// disk, and replaces the file by it in one step, keeping its access rights. Waits up to 200 ms for a process
/// that has the file open. A later save removes the temporary file that a killed process left behind.
///
/// If no temporary file can be created or the file cannot be replaced, but the file can be written, writes it
/// directly. It is then incomplete until that is done, and stays so if the process dies or the disk is full.
///
/// A failure raises `_com_error` and leaves no temporary file. The file keeps its old content, unless writing
/// it directly failed.
void SaveAtomically(IXMLDOMDocument& document, const std::wstring& path);

} // namespace Zuvan::Lumeq::Core::Utils
