/* A first host that loads the library at run time, and works without it. */
#include <Lumeq/lumeq_loader.h>

#include <stdio.h>

static void scan(const lumeq_table* call) {
    const lumeq_task task = call->scan_acquire_begin(NULL, L"Tarvik 3000");
    lumeq_scan_acquire details = LUMEQ_SCAN_ACQUIRE_INIT;
    details.color_mode = LUMEQ_SCAN_COLOR_MODE_COLOR;
    details.pages = 3;
    call->scan_acquire_complete(task, L"success", &details);
}

int main(void) {
    /* [load] */
    lumeq_loader loader;
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    if (lumeq_load(&loader, NULL) != LUMEQ_LOADED)
        fprintf(stderr, "%s (%lu)\n", lumeq_load_reason(loader.result), (unsigned long)loader.system_error);

    options.use_worker_thread = 1; /* No call below holds the caller. */
    loader.call.configure(&options);
    /* [/load] */
    {
        /* [run] */
        const lumeq_table* const call = &loader.call;
        lumeq_screen home = LUMEQ_SCREEN_INIT;
        call->startup(L"Scan Studio", LUMEQ_WHY_START_APP, LUMEQ_HOW_DESKTOP_SHORTCUT, 0, 0);
        call->set_opt_in(1); /* What the user answered. */

        home.flow = L"setup";
        home.screen_name = L"Home";
        call->screen_displayed(&home);
        call->button_clicked(&home, L"scan");
        scan(call);

        call->shutdown(10000);
        lumeq_unload(&loader);
        /* [/run] */
    }
    return 0;
}
