#pragma once

#include <functional>

namespace Zuvan::Lumeq::Testing {

/// Runs `body` on a thread with a stack of 256 KiB and waits for it. An overflow ends the test program.
void OnSmallStack(const std::function<void()>& body);

} // namespace Zuvan::Lumeq::Testing
