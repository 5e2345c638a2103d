// Where the library keeps the address of a delayed function: the file lists those apart from its other
// imports.
#include <DelayedSlots.h>

#include <cstring>

/// Null for a function that is not delayed.
extern "C" __declspec(dllexport) void** DelayedSlot(const char* function) {
    for (const auto& row : DelayedSlots)
        if (std::strcmp(row.function, function) == 0)
            return row.slot;
    return nullptr;
}
