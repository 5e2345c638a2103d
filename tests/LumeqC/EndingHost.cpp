// lumeq-ending: occupies the worker thread through ending-late.dll and returns from main.
#include <windows.h>

int main() {
    const HMODULE late = LoadLibraryW(L"ending-late.dll");
    if (late == nullptr)
        return 2;
    reinterpret_cast<void (*)()>(reinterpret_cast<void*>(GetProcAddress(late, "Occupy")))();
    return 7;
}
