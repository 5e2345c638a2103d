// The functions and structs of lumeq.h. Written by tools/rust_binding.py.
#![allow(dead_code, non_camel_case_types)]

use std::os::raw::c_char;

pub type lumeq_task = u64;

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_field {
    pub name: *const u16,
    pub value: *const u16,
}

impl Default for lumeq_field {
    fn default() -> Self {
        Self {
            name: std::ptr::null(),
            value: std::ptr::null(),
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_dictionary {
    pub fields: *const lumeq_field,
    pub count: usize,
}

impl Default for lumeq_dictionary {
    fn default() -> Self {
        Self {
            fields: std::ptr::null(),
            count: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_feature {
    pub name: *const u16,
    pub is_on: i32,
    pub reserved: i32,
}

impl Default for lumeq_feature {
    fn default() -> Self {
        Self {
            name: std::ptr::null(),
            is_on: 0,
            reserved: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_options {
    pub size: usize,
    pub use_worker_thread: i32,
    pub queue_capacity: i32,
}

impl Default for lumeq_options {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            use_worker_thread: 0,
            queue_capacity: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_state {
    pub size: usize,
    pub dropped_count: u64,
    pub is_disabled: i32,
    pub choice: i32,
    pub is_paused: i32,
    pub road: i32,
    pub uses_worker_thread: i32,
    pub queued_calls: i32,
}

impl Default for lumeq_state {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            dropped_count: 0,
            is_disabled: 0,
            choice: 0,
            is_paused: 0,
            road: 0,
            uses_worker_thread: 0,
            queued_calls: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_screen {
    pub size: usize,
    pub flow: *const u16,
    pub screen_path: *const u16,
    pub screen_name: *const u16,
    pub mode: *const u16,
    pub local_context: *const lumeq_dictionary,
    pub global_context: *const u16,
}

impl Default for lumeq_screen {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            flow: std::ptr::null(),
            screen_path: std::ptr::null(),
            screen_name: std::ptr::null(),
            mode: std::ptr::null(),
            local_context: std::ptr::null(),
            global_context: std::ptr::null(),
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_ad {
    pub size: usize,
    pub product: *const u16,
    pub name: *const u16,
    pub variant: *const u16,
    pub r#type: i32,
    pub reserved: i32,
}

impl Default for lumeq_ad {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            product: std::ptr::null(),
            name: std::ptr::null(),
            variant: std::ptr::null(),
            r#type: 0,
            reserved: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_form {
    pub size: usize,
    pub org_name: *const u16,
    pub code_name: *const u16,
    pub name: *const u16,
    pub version: *const u16,
    pub details: lumeq_dictionary,
    pub local_context: *const lumeq_dictionary,
    pub global_context: *const u16,
}

impl Default for lumeq_form {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            org_name: std::ptr::null(),
            code_name: std::ptr::null(),
            name: std::ptr::null(),
            version: std::ptr::null(),
            details: lumeq_dictionary::default(),
            local_context: std::ptr::null(),
            global_context: std::ptr::null(),
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_scan_acquire {
    pub size: usize,
    pub features: *const lumeq_feature,
    pub feature_count: usize,
    pub shortcut: i32,
    pub shortcut_variance: i32,
    pub item: i32,
    pub resolution: i32,
    pub color_mode: i32,
    pub page_size: i32,
    pub source: i32,
    pub mime: i32,
    pub pages: i32,
    pub reserved: i32,
}

impl Default for lumeq_scan_acquire {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            features: std::ptr::null(),
            feature_count: 0,
            shortcut: 0,
            shortcut_variance: 0,
            item: 0,
            resolution: 0,
            color_mode: 0,
            page_size: 0,
            source: 0,
            mime: 0,
            pages: 0,
            reserved: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_print_basic {
    pub size: usize,
    pub paper_size: *const u16,
    pub subsystem: i32,
    pub item: i32,
    pub mime: i32,
    pub page_size: i32,
    pub pages: i32,
    pub reserved: i32,
}

impl Default for lumeq_print_basic {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            paper_size: std::ptr::null(),
            subsystem: 0,
            item: 0,
            mime: 0,
            page_size: 0,
            pages: 0,
            reserved: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_file_send_to {
    pub size: usize,
    pub shortcut: i32,
    pub shortcut_variance: i32,
    pub mime: i32,
    pub destination: i32,
    pub pages: i32,
    pub reserved: i32,
}

impl Default for lumeq_file_send_to {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            shortcut: 0,
            shortcut_variance: 0,
            mime: 0,
            destination: 0,
            pages: 0,
            reserved: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_device_connect {
    pub size: usize,
    pub scenario: i32,
    pub method: i32,
}

impl Default for lumeq_device_connect {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            scenario: 0,
            method: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_device_config {
    pub size: usize,
    pub setting: i32,
    pub reserved: i32,
}

impl Default for lumeq_device_config {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            setting: 0,
            reserved: 0,
        }
    }
}

#[repr(C)]
#[derive(Clone, Copy)]
pub struct lumeq_software_install {
    pub size: usize,
    pub name: *const u16,
    pub version: *const u16,
    pub installer: i32,
    pub reserved: i32,
}

impl Default for lumeq_software_install {
    fn default() -> Self {
        Self {
            size: std::mem::size_of::<Self>(),
            name: std::ptr::null(),
            version: std::ptr::null(),
            installer: 0,
            reserved: 0,
        }
    }
}

#[link(name = "LumeqC")]
extern "C" {
    pub fn lumeq_version() -> u32;
    pub fn lumeq_abi() -> u32;
    pub fn lumeq_configure(options: *const lumeq_options) -> i32;
    pub fn lumeq_dropped_count() -> u64;
    pub fn lumeq_get_state(state: *mut lumeq_state) -> i32;
    pub fn lumeq_startup(app_name: *const u16, why: i32, how: i32, track_system_info: i32, track_print_queue_info: i32);
    pub fn lumeq_shutdown(timeout_msec: i32);
    pub fn lumeq_flush(timeout_msec: i32);
    pub fn lumeq_pause();
    pub fn lumeq_resume();
    pub fn lumeq_set_opt_in(user_has_opted_in: i32);
    pub fn lumeq_get_opt_in() -> i32;
    pub fn lumeq_set_local_subfolder(subpath: *const u16);
    pub fn lumeq_track_print_queue_info();
    pub fn lumeq_track_system_information();
    pub fn lumeq_set_global_context(global_context: *const u16);
    pub fn lumeq_screen_displayed(screen: *const lumeq_screen);
    pub fn lumeq_button_clicked(screen: *const lumeq_screen, control_name: *const u16);
    pub fn lumeq_tile_clicked(screen: *const lumeq_screen, control_name: *const u16);
    pub fn lumeq_hyperlink_clicked(screen: *const lumeq_screen, control_name: *const u16);
    pub fn lumeq_checkbox_changed(screen: *const lumeq_screen, control_name: *const u16, is_checked: i32);
    pub fn lumeq_ad_displayed(screen: *const lumeq_screen, control_name: *const u16, ad: *const lumeq_ad);
    pub fn lumeq_ad_clicked(screen: *const lumeq_screen, control_name: *const u16, ad: *const lumeq_ad);
    pub fn lumeq_ad_closed(screen: *const lumeq_screen, control_name: *const u16, ad: *const lumeq_ad);
    pub fn lumeq_url_launched(url: *const u16, local_context: *const lumeq_dictionary, global_context: *const u16);
    pub fn lumeq_form_submitted(form: *const lumeq_form);
    pub fn lumeq_report_generated(report: *const lumeq_form);
    pub fn lumeq_track_discovered_printers(devices: *const lumeq_dictionary, count: usize);
    pub fn lumeq_scan_acquire_begin(local_context: *const lumeq_dictionary, global_context: *const u16) -> lumeq_task;
    pub fn lumeq_scan_acquire_complete(task: lumeq_task, result: *const u16, details: *const lumeq_scan_acquire);
    pub fn lumeq_print_basic_begin(local_context: *const lumeq_dictionary, global_context: *const u16) -> lumeq_task;
    pub fn lumeq_print_basic_complete(task: lumeq_task, result: *const u16, details: *const lumeq_print_basic);
    pub fn lumeq_file_send_to_begin(local_context: *const lumeq_dictionary, global_context: *const u16) -> lumeq_task;
    pub fn lumeq_file_send_to_complete(task: lumeq_task, result: *const u16, details: *const lumeq_file_send_to);
    pub fn lumeq_device_connect_begin(local_context: *const lumeq_dictionary, global_context: *const u16) -> lumeq_task;
    pub fn lumeq_device_connect_complete(task: lumeq_task, result: *const u16, details: *const lumeq_device_connect);
    pub fn lumeq_device_config_begin(local_context: *const lumeq_dictionary, global_context: *const u16) -> lumeq_task;
    pub fn lumeq_device_config_complete(task: lumeq_task, result: *const u16, details: *const lumeq_device_config);
    pub fn lumeq_software_install_begin(local_context: *const lumeq_dictionary, global_context: *const u16) -> lumeq_task;
    pub fn lumeq_software_install_complete(task: lumeq_task, result: *const u16, details: *const lumeq_software_install);
    pub fn lumeq_task_abandon(task: lumeq_task);
    pub fn lumeq_task_is_open(task: lumeq_task) -> i32;
    pub fn lumeq_get_biid(device_uuid: *const c_char, buffer: *mut u16, size: usize) -> usize;
    pub fn lumeq_connection_method_text(method: i32, buffer: *mut u16, size: usize) -> usize;
}
