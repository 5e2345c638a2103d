// The enumerations of lumeq.h. Written by tools/rust_binding.py.

/// `enum lumeq_ad_type` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum AdType {
    #[default]
    Unknown = 0,
    Banner = 1,
    Hyperlink = 2,
    Tile = 3,
    Virtualalert = 4,
}

/// `enum lumeq_setting` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum Setting {
    #[default]
    Unknown = 0,
    PbutConsentEnable = 1,
    WebservicesRegistration = 2,
}

/// `enum lumeq_connection_method` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ConnectionMethod {
    #[default]
    Unknown = 0,
    AlreadyOnNetwork = 1,
    AutoWirelessConnect = 2,
    Ethernet = 3,
    FrontpanelSetupOfWireless = 4,
    Later = 5,
    PressWirelessButton = 6,
    Usb = 7,
    UsbPlusWifi = 8,
    UsbSetupOfWireless = 9,
    UsbToWifi = 10,
    WifiDirect = 11,
}

/// `enum lumeq_connection_scenario` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ConnectionScenario {
    #[default]
    Unknown = 0,
    Add = 1,
    Connect = 2,
    Convert = 3,
    Reconfigure = 4,
}

/// `enum lumeq_how` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum How {
    #[default]
    Unknown = 0,
    CdExe = 1,
    DesktopShortcut = 2,
    DesktopToast = 3,
    DxpLink = 4,
    FolderExe = 5,
    PnpInf = 6,
    SmvLink = 7,
    StartmenuShortcut = 8,
    UdcTile = 9,
}

/// `enum lumeq_installer` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum Installer {
    #[default]
    Unknown = 0,
    Exe = 1,
    Msi = 2,
}

/// `enum lumeq_why` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum Why {
    #[default]
    Unknown = 0,
    AddDevice = 1,
    AddSoftware = 2,
    ReconfigureDevice = 3,
    StartApp = 4,
    ViewDevice = 5,
    ViewDeviceError = 6,
    ViewDeviceSupplies = 7,
}

/// `enum lumeq_file_destination` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum FileDestination {
    #[default]
    Unknown = 0,
    CloudBox = 1,
    CloudDropbox = 2,
    CloudGoogledrive = 3,
    CloudOnedrive = 4,
    EmailMapi = 5,
    EmailSmtp = 6,
    Folder = 7,
}

/// `enum lumeq_file_mime` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum FileMime {
    #[default]
    Unknown = 0,
    ApplicationPdf = 1,
    ApplicationPdfsearchable = 2,
    ImageJpg = 3,
    ImageBmp = 4,
    ImageTiff = 5,
    ImagePng = 6,
    ApplicationRtf = 7,
    TextUnicode = 8,
    TextAnsi = 9,
    TextUtf8 = 10,
}

/// `enum lumeq_file_shortcut` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum FileShortcut {
    #[default]
    Unknown = 0,
    EmailJpg = 1,
    EmailPdf = 2,
    EveryDayScan = 3,
    SaveJpg = 4,
    SavePdf = 5,
    SaveText = 6,
    SendCloud = 7,
    User = 8,
}

/// `enum lumeq_file_shortcut_variance` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum FileShortcutVariance {
    #[default]
    Unknown = 0,
    Modified = 1,
    ModifiedOneOff = 2,
    Original = 3,
    OriginalOneOff = 4,
    User = 5,
    UserOneOff = 6,
}

/// `enum lumeq_scan_color_mode` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanColorMode {
    #[default]
    Unknown = 0,
    Auto = 1,
    Blackwhite = 2,
    Color = 3,
    Gray = 4,
    Halftone = 5,
}

/// `enum lumeq_scan_item` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanItem {
    #[default]
    Unknown = 0,
    Document = 1,
    Photo = 2,
}

/// `enum lumeq_scan_mime` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanMime {
    #[default]
    Unknown = 0,
    ApplicationPdf = 1,
    ApplicationPdfsearchable = 2,
    ApplicationRtf = 3,
    ImageBmp = 4,
    ImageJpg = 5,
    ImagePng = 6,
    ImageTiff = 7,
    TextAnsi = 8,
    TextUnicode = 9,
    TextUtf8 = 10,
}

/// `enum lumeq_scan_page_size` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanPageSize {
    #[default]
    Unknown = 0,
    A4 = 1,
    Auto = 2,
    Custom = 3,
    Entirearea = 4,
    Extralong = 5,
    Legal = 6,
    Letter = 7,
    Long = 8,
    Size4x6 = 9,
    Size5x7 = 10,
    Size8x10 = 11,
    Snap = 12,
}

/// `enum lumeq_scan_resolution` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanResolution {
    #[default]
    Unknown = 0,
    Dpi75 = 1,
    Dpi100 = 2,
    Dpi200 = 3,
    Dpi240 = 4,
    Dpi300 = 5,
    Dpi400 = 6,
    Dpi500 = 7,
    Dpi600 = 8,
    Dpi1200 = 9,
    Dpi2400 = 10,
    Dpi4800 = 11,
}

/// `enum lumeq_scan_shortcut` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanShortcut {
    #[default]
    Unknown = 0,
    EmailJpg = 1,
    EmailPdf = 2,
    EveryDayScan = 3,
    SaveJpg = 4,
    SavePdf = 5,
    SaveText = 6,
    SendCloud = 7,
    User = 8,
}

/// `enum lumeq_scan_shortcut_variance` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanShortcutVariance {
    #[default]
    Unknown = 0,
    Modified = 1,
    ModifiedOneOff = 2,
    Original = 3,
    OriginalOneOff = 4,
    User = 5,
    UserOneOff = 6,
}

/// `enum lumeq_scan_source` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum ScanSource {
    #[default]
    Unknown = 0,
    AdfDuplexBook = 1,
    AdfDuplexTablet = 2,
    AdfSimplex = 3,
    Flatbed = 4,
}

/// `enum lumeq_print_item` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum PrintItem {
    #[default]
    Unknown = 0,
    Document = 1,
    PhotoMulti = 2,
    PhotoSingle = 3,
}

/// `enum lumeq_print_mime` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum PrintMime {
    #[default]
    Unknown = 0,
    ApplicationPdf = 1,
    ImageAny = 2,
}

/// `enum lumeq_print_page_size` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum PrintPageSize {
    #[default]
    Unknown = 0,
    Full = 1,
    Size3p5x5 = 2,
    Size4x6 = 3,
    Size5x7 = 4,
    Size8x10 = 5,
    Size9x13Cm = 6,
    Size10x15Cm = 7,
    Size13x18Cm = 8,
}

/// `enum lumeq_print_subsystem` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum PrintSubsystem {
    #[default]
    Unknown = 0,
    Ipp = 1,
    Native = 2,
}

/// `enum lumeq_choice` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum Choice {
    #[default]
    Unknown = 0,
    Unset = 1,
    No = 2,
    Yes = 3,
}

/// `enum lumeq_road` of lumeq.h.
#[derive(Clone, Copy, Debug, Default, Eq, PartialEq)]
#[repr(i32)]
pub enum Road {
    #[default]
    Unknown = 0,
    Managed = 1,
    Basic = 2,
}
