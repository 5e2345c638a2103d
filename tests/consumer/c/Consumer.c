#if defined(LUMEQ_USE_LOADER)
#include <Lumeq/lumeq_loader.h>
#else
#include <Lumeq/lumeq_table.h>
#endif

#include <stdio.h>

int main(void) {
    wchar_t text[32];
    lumeq_task task;
    int was_open;
#if defined(LUMEQ_USE_LOADER)
    lumeq_loader loader;
    const lumeq_table* const call = &loader.call;
    printf("%s: ", lumeq_load_reason(lumeq_load(&loader, NULL)));
#else
    lumeq_table linked;
    const lumeq_table* const call = &linked;
    lumeq_table_set_linked(&linked);
#endif
    call->connection_method_text(LUMEQ_CONNECTION_METHOD_WIFI_DIRECT, text, 32);
    task = call->print_basic_begin(NULL, NULL);
    was_open = call->task_is_open(task);
    call->task_abandon(task);
    printf("%ls, %s, %s\n", text, was_open ? "opened" : "not opened",
           call->task_is_open(task) ? "not completed" : "completed");
    return 0;
}
