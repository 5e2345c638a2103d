//! The run of an application and what belongs to no screen and no task.

use std::ffi::CString;
use std::time::Duration;

use crate::raw;
use crate::text::{written, Dictionary, Fields, Text};
use crate::vocabulary::{Choice, ConnectionMethod, How, Road, Why};

/// What may be reported at a start.
#[derive(Clone, Copy, Default)]
pub struct Tracking {
    pub system_info: bool,
    pub print_queue_info: bool,
}

/// A run of the application: begins with the object and ends with it.
#[must_use = "the run ends with this object"]
pub struct Session {
    timeout: Duration,
}

impl Session {
    pub fn start(app_name: &str, why: Why, how: How, tracking: Tracking) -> Self {
        let name = Text::new(app_name);
        // SAFETY: the library copies the text.
        unsafe {
            raw::lumeq_startup(
                name.get(),
                why as i32,
                how as i32,
                tracking.system_info.into(),
                tracking.print_queue_info.into(),
            )
        }
        Self { timeout: Duration::from_secs(10) }
    }

    /// How long its end may wait for the worker thread and for delivery; ten seconds unless set.
    pub fn timeout(mut self, timeout: Duration) -> Self {
        self.timeout = timeout;
        self
    }
}

impl Drop for Session {
    fn drop(&mut self) {
        // SAFETY: it takes a number.
        unsafe { raw::lumeq_shutdown(milliseconds(self.timeout)) }
    }
}

/// The user is opted out as long as it lives.
#[must_use = "the pause ends with this object"]
pub struct Pause(());

impl Pause {
    pub fn begin() -> Self {
        // SAFETY: no arguments.
        unsafe { raw::lumeq_pause() }
        Self(())
    }
}

impl Drop for Pause {
    fn drop(&mut self) {
        // SAFETY: no arguments.
        unsafe { raw::lumeq_resume() }
    }
}

fn milliseconds(time: Duration) -> i32 {
    i32::try_from(time.as_millis()).unwrap_or(i32::MAX)
}

/// As `lumeq_configure`: before all other calls. False if it comes too late. `queue_capacity` zero: the default.
pub fn use_worker_thread(queue_capacity: i32) -> bool {
    let options = raw::lumeq_options { use_worker_thread: 1, queue_capacity, ..Default::default() };
    // SAFETY: the library reads the struct during the call.
    unsafe { raw::lumeq_configure(&options) != 0 }
}

/// The version of the library that is loaded: 10000 for 1.0.0.
pub fn version() -> u32 {
    // SAFETY: no arguments.
    unsafe { raw::lumeq_version() }
}

/// How many calls were dropped before they reached the library proper.
pub fn dropped_count() -> u64 {
    // SAFETY: no arguments.
    unsafe { raw::lumeq_dropped_count() }
}

/// What telemetry is doing. `lumeq_state` of lumeq.h says what each field means.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
pub struct State {
    pub dropped_count: u64,
    pub is_disabled: bool,
    pub choice: Choice,
    pub is_paused: bool,
    pub road: Road,
    pub uses_worker_thread: bool,
    pub queued_calls: i32,
}

/// As `lumeq_get_state`. Everything is unknown or zero while the process ends.
pub fn state() -> State {
    let mut its = raw::lumeq_state::default();
    // SAFETY: the library writes as much as the size in the struct says.
    unsafe { raw::lumeq_get_state(&mut its) };
    State {
        dropped_count: its.dropped_count,
        is_disabled: its.is_disabled != 0,
        choice: [Choice::Unknown, Choice::Unset, Choice::No, Choice::Yes].get(its.choice as usize).copied().unwrap_or_default(),
        is_paused: its.is_paused != 0,
        road: [Road::Unknown, Road::Managed, Road::Basic].get(its.road as usize).copied().unwrap_or_default(),
        uses_worker_thread: its.uses_worker_thread != 0,
        queued_calls: its.queued_calls,
    }
}

pub fn flush(timeout: Duration) {
    // SAFETY: it takes a number.
    unsafe { raw::lumeq_flush(milliseconds(timeout)) }
}

pub fn set_opt_in(user_has_opted_in: bool) {
    // SAFETY: it takes a number.
    unsafe { raw::lumeq_set_opt_in(user_has_opted_in.into()) }
}

pub fn opt_in() -> bool {
    // SAFETY: no arguments.
    unsafe { raw::lumeq_get_opt_in() != 0 }
}

pub fn set_local_subfolder(subpath: &str) {
    // SAFETY: the library copies the text.
    unsafe { raw::lumeq_set_local_subfolder(Text::new(subpath).get()) }
}

/// The device model that all later events are about.
pub fn set_model(name: &str) {
    // SAFETY: the library copies the text.
    unsafe { raw::lumeq_set_global_context(Text::new(name).get()) }
}

pub fn track_print_queue_info() {
    // SAFETY: no arguments.
    unsafe { raw::lumeq_track_print_queue_info() }
}

pub fn track_system_information() {
    // SAFETY: no arguments.
    unsafe { raw::lumeq_track_system_information() }
}

/// Each device must hold `dev_biid`: "unknown" or the result of [`biid`].
pub fn track_discovered_printers(devices: &[Fields]) {
    let owned: Vec<_> = devices.iter().map(|fields| Dictionary::new(fields)).collect();
    let list: Vec<_> = owned.iter().map(Dictionary::get).collect();
    // SAFETY: the library copies the dictionaries, and `owned` lives until then.
    unsafe { raw::lumeq_track_discovered_printers(list.as_ptr(), list.len()) }
}

/// The identifier of the device with this UUID; empty on failure.
pub fn biid(device_uuid: &str) -> String {
    let up_to_zero = device_uuid.split('\0').next().unwrap_or("");
    let uuid = CString::new(up_to_zero).unwrap_or_default();
    // SAFETY: the library writes at most `size` characters.
    written(|buffer, size| unsafe { raw::lumeq_get_biid(uuid.as_ptr(), buffer, size) })
}

impl ConnectionMethod {
    pub fn text(self) -> String {
        // SAFETY: the library writes at most `size` characters.
        written(|buffer, size| unsafe { raw::lumeq_connection_method_text(self as i32, buffer, size) })
    }
}
