// Every function of lumeq.h that makes a call, with all of its arguments, and what the stand-ins note of it.
#pragma once

#include <Lumeq/lumeq.h>

#include <string>
#include <vector>

namespace Zuvan::Lumeq::Testing {

struct EveryCall {
    const char* name;
    void (*make)();
    std::wstring noted;
};

/// With good arguments.
const std::vector<EveryCall>& FullCalls();

/// With null instead of every text, struct and array.
const std::vector<EveryCall>& NullCalls();

/// Ends the task of the last full call, in case that call did not.
void EndTask();

// Good arguments.
extern const lumeq_dictionary Local;
lumeq_screen FullScreen();
lumeq_ad FullAd();
lumeq_form FullForm();

} // namespace Zuvan::Lumeq::Testing
