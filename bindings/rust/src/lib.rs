//! Usage telemetry for desktop applications on 64-bit Windows: a safe layer over the functions of `lumeq.h`.
//!
//! ```no_run
//! use lumeq::{How, Screen, Session, Tracking, Why};
//!
//! lumeq::use_worker_thread(0);
//! let _session = Session::start("Scan Studio", Why::StartApp, How::DesktopShortcut, Tracking::default());
//! let home = Screen::new("Home").flow("setup");
//! home.shown();
//! home.button_clicked("ok");
//! ```
//!
//! Texts are copied as UTF-16; one that contains a zero character ends there. The library logs what it refuses;
//! nothing here checks it. Any thread may call.

mod raw;
mod screen;
mod session;
mod task;
mod text;
mod vocabulary;

pub use screen::{url_launched, Ad, Form, Screen};
pub use session::{
    biid, dropped_count, flush, opt_in, set_local_subfolder, set_model, set_opt_in, state, track_discovered_printers,
    track_print_queue_info, track_system_information, use_worker_thread, version, Pause, Session, State, Tracking,
};
pub use task::{
    Details, DeviceConfig, DeviceConfigDetails, DeviceConnect, DeviceConnectDetails, FileSendTo, FileSendToDetails, Kind,
    PrintBasic, PrintBasicDetails, ScanAcquire, ScanAcquireDetails, SoftwareInstall, SoftwareInstallDetails, Task,
};
pub use text::{Context, Fields};
pub use vocabulary::*;
