//! A first host in Rust.
use lumeq::*;

fn scan() {
    // [task]
    let task = Task::<ScanAcquire>::begin(&Context { model: Some("Tarvik 3000"), ..Default::default() });
    // ... the scan ...
    let details = ScanAcquireDetails { color_mode: ScanColorMode::Color, pages: 3, ..Default::default() };
    task.complete("success", &details);
    // [/task]
}

fn main() {
    // [run]
    use_worker_thread(0); // No call below holds the caller. 0: the default capacity of its queue.
    let _session = Session::start("Scan Studio", Why::StartApp, How::DesktopShortcut, Tracking::default());
    set_opt_in(true); // What the user answered.

    let home = Screen::new("Home").flow("setup");
    home.shown();
    home.button_clicked("scan");
    scan();
    // [/run]
}
