// Prints the number of each process that runs one of the named executables.
#include <windows.h>

#include <cstdio>
#include <tlhelp32.h>

int wmain(int count, wchar_t** names) {
    const HANDLE processes = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W process{};
    process.dwSize = sizeof process;
    for (BOOL found = Process32FirstW(processes, &process); found;
         found = Process32NextW(processes, &process))
        for (int i = 1; i < count; ++i)
            if (_wcsicmp(process.szExeFile, names[i]) == 0)
                std::printf("%ls %lu\n", process.szExeFile, process.th32ProcessID);
    return 0;
}
