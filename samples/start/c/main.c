/* A first host in C, over lumeq.h. */
#include <Lumeq/lumeq.h>

static void scan(void) {
    /* [task] */
    const lumeq_task task = lumeq_scan_acquire_begin(NULL, L"Tarvik 3000");
    lumeq_scan_acquire details = LUMEQ_SCAN_ACQUIRE_INIT;
    /* ... the scan ... */
    details.color_mode = LUMEQ_SCAN_COLOR_MODE_COLOR;
    details.pages = 3;
    lumeq_scan_acquire_complete(task, L"success", &details);
    /* [/task] */
}

int main(void) {
    /* [run] */
    lumeq_options options = LUMEQ_OPTIONS_INIT;
    lumeq_screen home = LUMEQ_SCREEN_INIT;
    options.use_worker_thread = 1; /* No call below holds the caller. */
    lumeq_configure(&options);

    lumeq_startup(L"Scan Studio", LUMEQ_WHY_START_APP, LUMEQ_HOW_DESKTOP_SHORTCUT, 0, 0);
    lumeq_set_opt_in(1); /* What the user answered. */

    home.flow = L"setup";
    home.screen_name = L"Home";
    lumeq_screen_displayed(&home);
    lumeq_button_clicked(&home, L"scan");
    scan();

    lumeq_shutdown(10000);
    /* [/run] */
    return 0;
}
