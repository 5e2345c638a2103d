// Loads LumeqC.dll at run time, for hosts that may ship without it or load it after consent.
//
// Both DLLs are loaded by their full paths, on every system since Windows 7, and never searched for. Whatever
// goes wrong, the table then holds functions that do nothing, and the result says why. C99 and C++98.
//
//     lumeq_loader loader;
//     if (lumeq_load(&loader, NULL) != LUMEQ_LOADED)
//         report(lumeq_load_reason(loader.result), loader.system_error);
//     loader.call.pause();
#ifndef LUMEQ_LUMEQ_LOADER_H
#define LUMEQ_LUMEQ_LOADER_H

#include <Lumeq/lumeq_table.h>

#include <windows.h>

#if defined(__cplusplus)
extern "C" {
#endif

enum lumeq_load_result {
    LUMEQ_LOADED = 0,
    LUMEQ_LOAD_BAD_FOLDER = 1, ///< The folder is not an absolute path, or too long.
    LUMEQ_LOAD_MISSING = 2,    ///< One of the two files is not there.
    LUMEQ_LOAD_DAMAGED = 3,    ///< Windows cannot load one of them, or they do not belong together.
    LUMEQ_LOAD_OTHER = 4,      ///< A Lumeq.dll of another folder is loaded already.
    LUMEQ_LOAD_FOREIGN = 5,    ///< The file is no library of this name's maker.
    LUMEQ_LOAD_OLD = 6         ///< The library lacks a function, or has another LUMEQ_ABI_NUMBER.
};

typedef struct lumeq_loader {
    lumeq_table call;
    int32_t result;        ///< enum lumeq_load_result
    uint32_t system_error; ///< What GetLastError returned where Windows refused.
    HMODULE core;
    HMODULE library;
} lumeq_loader;

/// Frees the library. The table then holds functions that do nothing. No call may run.
static inline void lumeq_unload(lumeq_loader* loader) {
    lumeq_table_set_no_ops(&loader->call);
    if (loader->library != NULL)
        FreeLibrary(loader->library);
    if (loader->core != NULL)
        FreeLibrary(loader->core);
    loader->library = NULL;
    loader->core = NULL;
}

static inline lumeq_any_function lumeq_loader_find(void* library, const char* name) {
    return (lumeq_any_function)GetProcAddress((HMODULE)library, name);
}

/// Appends `name` to the folder whose path is `length` characters long. 0 if that is too long.
static inline int lumeq_loader_append(wchar_t* path, size_t length, size_t capacity, const wchar_t* name) {
    size_t at = 0;
    do {
        if (length + at >= capacity)
            return 0;
        path[length + at] = name[at];
    } while (name[at++] != 0);
    return 1;
}

/// Whether it begins with a drive and its root, or with a server.
static inline int lumeq_loader_is_absolute(const wchar_t* path) {
    if (path[0] == L'\\')
        return path[1] == L'\\';
    return path[0] != 0 && path[1] == L':' && path[2] == L'\\';
}

/// Writes the folder's path with a backslash at its end. Returns its length; 0 if it is not absolute or too
/// long.
static inline size_t lumeq_loader_folder(wchar_t* path, size_t capacity, const wchar_t* folder) {
    size_t length = 0;
    if (folder == NULL) {
        length = GetModuleFileNameW(NULL, path, (DWORD)capacity);
        while (length > 0 && path[length - 1] != L'\\')
            --length;
        return length;
    }
    if (!lumeq_loader_is_absolute(folder) || !lumeq_loader_append(path, 0, capacity, folder))
        return 0;
    while (path[length] != 0)
        ++length;
    if (path[length - 1] == L'\\')
        return length;
    return lumeq_loader_append(path, length, capacity, L"\\") ? length + 1 : 0;
}

/// Loads one file. The folder comes first in the search for what it imports, and the file itself is not
/// searched for.
static inline HMODULE lumeq_loader_load(lumeq_loader* loader, const wchar_t* path) {
    const HMODULE module = LoadLibraryExW(path, NULL, LOAD_WITH_ALTERED_SEARCH_PATH);
    if (module == NULL) {
        loader->system_error = GetLastError();
        loader->result =
            GetFileAttributesW(path) == INVALID_FILE_ATTRIBUTES ? LUMEQ_LOAD_MISSING : LUMEQ_LOAD_DAMAGED;
    }
    return module;
}

/// Both libraries, with `path` as a buffer that begins with the folder.
static inline void lumeq_loader_load_both(lumeq_loader* loader, wchar_t* path, size_t length,
                                          size_t capacity) {
    if (!lumeq_loader_append(path, length, capacity, L"Lumeq.dll"))
        return;
    // Before LumeqC.dll, which imports it by its name and would else search for it.
    loader->core = lumeq_loader_load(loader, path);
    if (loader->core == NULL)
        return;
    if (GetModuleHandleW(L"Lumeq.dll") != loader->core) {
        loader->result = LUMEQ_LOAD_OTHER;
        return;
    }
    if (!lumeq_loader_append(path, length, capacity, L"LumeqC.dll"))
        return;
    loader->library = lumeq_loader_load(loader, path);
    if (loader->library != NULL)
        loader->result = LUMEQ_LOADED;
}

static inline void lumeq_loader_fill(lumeq_loader* loader) {
    uint32_t (*const abi)(void) = (uint32_t(*)(void))lumeq_loader_find(loader->library, "lumeq_abi");
    if (abi == NULL)
        loader->result = LUMEQ_LOAD_FOREIGN;
    else if (abi() != LUMEQ_ABI_NUMBER ||
             !lumeq_table_set_found(&loader->call, lumeq_loader_find, loader->library))
        loader->result = LUMEQ_LOAD_OLD;
}

/// Loads the library from `folder`, an absolute path, or from the executable's folder for NULL. Fills
/// `loader`, whatever it held before, and returns its `result`. Not under the loader lock.
static inline int32_t lumeq_load(lumeq_loader* loader, const wchar_t* folder) {
    enum { CAPACITY = 32768 };
    wchar_t* const path = (wchar_t*)HeapAlloc(GetProcessHeap(), 0, CAPACITY * sizeof(wchar_t));
    size_t length = 0;
    DWORD mode = 0;
    loader->core = NULL;
    loader->library = NULL;
    loader->system_error = 0;
    loader->result = LUMEQ_LOAD_BAD_FOLDER;
    lumeq_table_set_no_ops(&loader->call);
    if (path != NULL)
        length = lumeq_loader_folder(path, CAPACITY, folder);
    if (length > 0) {
        // A damaged file must not cause a message box.
        SetThreadErrorMode(SEM_FAILCRITICALERRORS, &mode);
        lumeq_loader_load_both(loader, path, length, CAPACITY);
        SetThreadErrorMode(mode, NULL);
    }
    HeapFree(GetProcessHeap(), 0, path);
    if (loader->result == LUMEQ_LOADED)
        lumeq_loader_fill(loader);
    if (loader->result != LUMEQ_LOADED)
        lumeq_unload(loader);
    return loader->result;
}

/// A sentence for a log.
static inline const char* lumeq_load_reason(int32_t result) {
    switch (result) {
    case LUMEQ_LOADED:
        return "LumeqC.dll is loaded";
    case LUMEQ_LOAD_BAD_FOLDER:
        return "the folder of LumeqC.dll is not an absolute path";
    case LUMEQ_LOAD_MISSING:
        return "LumeqC.dll or Lumeq.dll is missing";
    case LUMEQ_LOAD_DAMAGED:
        return "LumeqC.dll or Lumeq.dll cannot be loaded";
    case LUMEQ_LOAD_OTHER:
        return "another Lumeq.dll is loaded already";
    case LUMEQ_LOAD_FOREIGN:
        return "LumeqC.dll is a foreign file";
    case LUMEQ_LOAD_OLD:
        return "LumeqC.dll does not fit this host";
    default:
        return "unknown result";
    }
}

#if defined(__cplusplus)
}
#endif

#endif
