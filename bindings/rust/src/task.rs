//! Tasks, from their beginning to their completion.

use std::marker::PhantomData;

use crate::raw;
use crate::text::{Context, RawContext, Text};
use crate::vocabulary::*;

type BeginFunction = unsafe extern "C" fn(*const raw::lumeq_dictionary, *const u16) -> raw::lumeq_task;

/// A kind of task.
pub trait Kind {
    #[doc(hidden)]
    const BEGIN: BeginFunction;
}

/// What a task of kind `K` is completed with.
pub trait Details<K: Kind> {
    #[doc(hidden)]
    fn complete(&self, task: raw::lumeq_task, result: &Text);
}

/// An open task. One that is refused stays open and may be completed again. One that is still open at the end of its
/// scope is completed as "unknown".
#[must_use = "a task that is dropped is completed as unknown"]
pub struct Task<K: Kind> {
    number: raw::lumeq_task,
    kind: PhantomData<fn(K)>,
}

impl<K: Kind> Task<K> {
    pub fn begin(context: &Context) -> Self {
        let context = RawContext::new(context);
        // SAFETY: the library copies the fields and the text.
        let number = unsafe { K::BEGIN(context.local(), context.global()) };
        Self { number, kind: PhantomData }
    }

    pub fn complete(&self, result: &str, details: &impl Details<K>) {
        details.complete(self.number, &Text::new(result))
    }

    /// With the worker thread this waits for its turn.
    pub fn is_open(&self) -> bool {
        // SAFETY: it takes a number.
        unsafe { raw::lumeq_task_is_open(self.number) != 0 }
    }
}

impl<K: Kind> Drop for Task<K> {
    fn drop(&mut self) {
        // SAFETY: it takes a number, of any task or none.
        unsafe { raw::lumeq_task_abandon(self.number) }
    }
}

pub enum ScanAcquire {}

impl Kind for ScanAcquire {
    const BEGIN: BeginFunction = raw::lumeq_scan_acquire_begin;
}

#[derive(Clone, Copy, Debug, Default)]
pub struct ScanAcquireDetails<'a> {
    pub shortcut: ScanShortcut,
    pub shortcut_variance: ScanShortcutVariance,
    pub item: ScanItem,
    pub resolution: ScanResolution,
    pub color_mode: ScanColorMode,
    pub page_size: ScanPageSize,
    pub source: ScanSource,
    pub mime: ScanMime,
    pub features: &'a [(&'a str, bool)],
    pub pages: i32,
}

impl Details<ScanAcquire> for ScanAcquireDetails<'_> {
    fn complete(&self, task: raw::lumeq_task, result: &Text) {
        let names: Vec<_> = self.features.iter().map(|(name, _)| Text::new(name)).collect();
        let features: Vec<_> = names
            .iter()
            .zip(self.features)
            .map(|(name, (_, is_on))| raw::lumeq_feature { name: name.get(), is_on: (*is_on).into(), reserved: 0 })
            .collect();
        let details = raw::lumeq_scan_acquire {
            shortcut: self.shortcut as i32,
            shortcut_variance: self.shortcut_variance as i32,
            item: self.item as i32,
            resolution: self.resolution as i32,
            color_mode: self.color_mode as i32,
            page_size: self.page_size as i32,
            source: self.source as i32,
            mime: self.mime as i32,
            features: features.as_ptr(),
            feature_count: features.len(),
            pages: self.pages,
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to, and the text.
        unsafe { raw::lumeq_scan_acquire_complete(task, result.get(), &details) }
    }
}

pub enum PrintBasic {}

impl Kind for PrintBasic {
    const BEGIN: BeginFunction = raw::lumeq_print_basic_begin;
}

#[derive(Clone, Copy, Debug, Default)]
pub struct PrintBasicDetails<'a> {
    pub subsystem: PrintSubsystem,
    pub item: PrintItem,
    pub mime: PrintMime,
    pub page_size: PrintPageSize,
    pub paper_size: &'a str,
    pub pages: i32,
}

impl Details<PrintBasic> for PrintBasicDetails<'_> {
    fn complete(&self, task: raw::lumeq_task, result: &Text) {
        let paper_size = Text::new(self.paper_size);
        let details = raw::lumeq_print_basic {
            subsystem: self.subsystem as i32,
            item: self.item as i32,
            mime: self.mime as i32,
            page_size: self.page_size as i32,
            paper_size: paper_size.get(),
            pages: self.pages,
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to, and the text.
        unsafe { raw::lumeq_print_basic_complete(task, result.get(), &details) }
    }
}

pub enum FileSendTo {}

impl Kind for FileSendTo {
    const BEGIN: BeginFunction = raw::lumeq_file_send_to_begin;
}

#[derive(Clone, Copy, Debug, Default)]
pub struct FileSendToDetails {
    pub shortcut: FileShortcut,
    pub shortcut_variance: FileShortcutVariance,
    pub mime: FileMime,
    pub destination: FileDestination,
    pub pages: i32,
}

impl Details<FileSendTo> for FileSendToDetails {
    fn complete(&self, task: raw::lumeq_task, result: &Text) {
        let details = raw::lumeq_file_send_to {
            shortcut: self.shortcut as i32,
            shortcut_variance: self.shortcut_variance as i32,
            mime: self.mime as i32,
            destination: self.destination as i32,
            pages: self.pages,
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to, and the text.
        unsafe { raw::lumeq_file_send_to_complete(task, result.get(), &details) }
    }
}

pub enum DeviceConnect {}

impl Kind for DeviceConnect {
    const BEGIN: BeginFunction = raw::lumeq_device_connect_begin;
}

#[derive(Clone, Copy, Debug, Default)]
pub struct DeviceConnectDetails {
    pub scenario: ConnectionScenario,
    pub method: ConnectionMethod,
}

impl Details<DeviceConnect> for DeviceConnectDetails {
    fn complete(&self, task: raw::lumeq_task, result: &Text) {
        let details = raw::lumeq_device_connect {
            scenario: self.scenario as i32,
            method: self.method as i32,
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to, and the text.
        unsafe { raw::lumeq_device_connect_complete(task, result.get(), &details) }
    }
}

pub enum DeviceConfig {}

impl Kind for DeviceConfig {
    const BEGIN: BeginFunction = raw::lumeq_device_config_begin;
}

#[derive(Clone, Copy, Debug, Default)]
pub struct DeviceConfigDetails {
    pub setting: Setting,
}

impl Details<DeviceConfig> for DeviceConfigDetails {
    fn complete(&self, task: raw::lumeq_task, result: &Text) {
        let details = raw::lumeq_device_config {
            setting: self.setting as i32,
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to, and the text.
        unsafe { raw::lumeq_device_config_complete(task, result.get(), &details) }
    }
}

pub enum SoftwareInstall {}

impl Kind for SoftwareInstall {
    const BEGIN: BeginFunction = raw::lumeq_software_install_begin;
}

#[derive(Clone, Copy, Debug, Default)]
pub struct SoftwareInstallDetails<'a> {
    pub installer: Installer,
    pub name: &'a str,
    pub version: &'a str,
}

impl Details<SoftwareInstall> for SoftwareInstallDetails<'_> {
    fn complete(&self, task: raw::lumeq_task, result: &Text) {
        let [name, version] = [self.name, self.version].map(Text::new);
        let details = raw::lumeq_software_install {
            installer: self.installer as i32,
            name: name.get(),
            version: version.get(),
            ..Default::default()
        };
        // SAFETY: the library copies what the struct points to, and the text.
        unsafe { raw::lumeq_software_install_complete(task, result.get(), &details) }
    }
}
