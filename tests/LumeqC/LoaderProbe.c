// lumeq-loader [FOLDER [FIRST]]: loads the file FIRST, then the library from the folder, or from its own, and
// prints what the loader says and what some functions of the table return, before and after unloading.
#include <Lumeq/lumeq_loader.h>

#include <stdio.h>

static void print_calls(const lumeq_table* call) {
    wchar_t text[32] = L"before";
    const size_t needed = call->connection_method_text(LUMEQ_CONNECTION_METHOD_USB, text, 32);
    const lumeq_task task = call->device_config_begin(NULL, NULL);
    call->task_abandon(task);
    call->pause();
    call->resume();
    printf("version %u, text %u \"%ls\", task %s\n", (unsigned)call->version(), (unsigned)needed, text,
           task ? "open" : "none");
}

int wmain(int count, wchar_t** arguments) {
    lumeq_loader loader;
    if (count > 2 && LoadLibraryW(arguments[2]) == NULL)
        return 2;
    lumeq_load(&loader, count > 1 ? arguments[1] : NULL);
    printf("%d, %s\n", (int)loader.result, lumeq_load_reason(loader.result));
    print_calls(&loader.call);
    lumeq_unload(&loader);
    print_calls(&loader.call);
    printf("modules %d\n",
           (GetModuleHandleW(L"Lumeq.dll") != NULL) + (GetModuleHandleW(L"LumeqC.dll") != NULL));
    fflush(stdout);
    return 0;
}
