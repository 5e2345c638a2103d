// The exports of the loaded library, as the public header declares them.
#pragma once

#include "samples/host/Library.h"

#include <Lumeq/LumeqApi.h>

#include <stdexcept>
#include <string>

namespace LumeqBench {

namespace API = Zuvan::Lumeq::API;

template <class Function>
Function* Export(const SampleHost::Library& library, const std::string& name) {
    Function* const function = library.Find<Function>(name);
    if (function == nullptr)
        throw std::runtime_error("Lumeq.dll has no export " + name);
    return function;
}

} // namespace LumeqBench
