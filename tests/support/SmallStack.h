#pragma once

#include <functional>

namespace Zuvan::Lumeq::Testing {

/// Runs `body` on a thread with a stack of 256 KiB and waits for it.
void OnSmallStack(const std::function<void()>& body);

} // namespace Zuvan::Lumeq::Testing
