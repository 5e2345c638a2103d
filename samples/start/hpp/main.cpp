// A first host in C++17 of any compiler, over lumeq.hpp.
#include <Lumeq/lumeq.hpp>

namespace {

void scan() {
    // [task]
    const auto task = lumeq::scan_task::begin({}, lumeq::model(L"Tarvik 3000"));
    // ... the scan ...
    lumeq::scan_details details;
    details.color_mode = lumeq::scan_color_mode::color;
    details.pages = 3;
    task.complete(L"success", details);
    // [/task]
}

} // namespace

int main() {
    // [run]
    lumeq::use_worker_thread(); // No call below holds the caller.
    const lumeq::session session(L"Scan Studio", lumeq::why::start_app, lumeq::how::desktop_shortcut);
    lumeq::set_opt_in(true); // What the user answered.

    const lumeq::screen home(L"Home", lumeq::flow(L"setup"));
    home.shown();
    home.button(L"scan").clicked();
    scan();
    // [/run]
}
