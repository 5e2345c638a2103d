#include <Lumeq/lumeq.h>

#include "toolbar.h"

void toolbar_press(const wchar_t* button) {
    lumeq_screen screen = LUMEQ_SCREEN_INIT;
    screen.screen_name = L"Toolbar";
    lumeq_button_clicked(&screen, button);
}
