// Skips what makes the real system slow: the log's mutex, which all tests share, the debugger channel, and
// waiting for the disk.
#pragma once

#include "support/ImportedFunction.h"

namespace Zuvan::Lumeq::Testing {

/// While one lives, the module's own calls arrive here.
class QuickSystem {
public:
    explicit QuickSystem(HMODULE module);

private:
    ImportedFunction<decltype(CreateMutexW)> _createMutex;
    ImportedFunction<decltype(WaitForSingleObject)> _wait;
    ImportedFunction<decltype(ReleaseMutex)> _releaseMutex;
    ImportedFunction<decltype(CloseHandle)> _closeHandle;
    ImportedFunction<decltype(FlushFileBuffers)> _flush;
    ImportedFunction<decltype(OutputDebugStringA)> _debugNarrow;
    ImportedFunction<decltype(OutputDebugStringW)> _debugWide;
};

} // namespace Zuvan::Lumeq::Testing
