//! A host in Rust: the day of ../day.jsonl. Any argument chooses the worker thread.

use std::process::ExitCode;
use std::time::Duration;

use lumeq::*;

const NOTHING: Context = Context { local: &[], model: None };

fn with<'a>(local: Fields<'a>) -> Context<'a> {
    Context { local, model: None }
}

fn agree() {
    let consent = Screen::new("Consent").flow("welcome");
    consent.context(with(&[("language", "de-AT")])).shown();
    consent.checkbox_changed("agree", true);
    set_opt_in(true);
}

fn find_printers() {
    biid("1c852a4d-b800-1f08-abcd-3c52821f9ab0");
    biid("1c852a4d-b800-1f08-abcd-3c52821f9ab1");
    track_discovered_printers(&[
        &[("dev_biid", "unknown"), ("dev_modelname", "Model 8100"), ("dev_connection", "wifi")],
        &[],
        &[
            ("dev_biid", "0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef"),
            ("dev_modelname", "Model 400"),
        ],
    ]);
    set_model("Model 8100");
}

fn set_device_up() {
    let connection = Task::<DeviceConnect>::begin(&with(&[("attempt", "1")]));
    let installation = Task::<SoftwareInstall>::begin(&NOTHING);
    installation.complete(
        "success",
        &SoftwareInstallDetails { installer: Installer::Msi, name: "scan-station.msi", version: "2.14.0" },
    );
    connection.complete(
        "success",
        &DeviceConnectDetails { scenario: ConnectionScenario::Add, method: ConnectionMethod::AutoWirelessConnect },
    );
    Task::<DeviceConfig>::begin(&NOTHING)
        .complete("error_Timeout", &DeviceConfigDetails { setting: Setting::WebservicesRegistration });
}

fn preview() {
    let screen = Screen::new("Preview").flow("scan").mode("document");
    screen.shown();
    screen.button_clicked("not a name");
    screen.ad_displayed("offer", &Ad { kind: AdType::Tile, product: "ink", name: "spring offer", variant: "b" });
}

fn scan_and_send() {
    let scan = Task::<ScanAcquire>::begin(&with(&[("source", "feeder")]));
    scan.complete(
        "success",
        &ScanAcquireDetails {
            shortcut: ScanShortcut::SavePdf,
            shortcut_variance: ScanShortcutVariance::Original,
            item: ScanItem::Document,
            resolution: ScanResolution::Dpi300,
            color_mode: ScanColorMode::Color,
            page_size: ScanPageSize::A4,
            source: ScanSource::AdfDuplexBook,
            mime: ScanMime::ApplicationPdf,
            features: &[("deskew", true), ("remove_blank_pages", false)],
            pages: 4,
        },
    );
    Task::<FileSendTo>::begin(&NOTHING).complete(
        "success",
        &FileSendToDetails {
            shortcut: FileShortcut::EmailPdf,
            shortcut_variance: FileShortcutVariance::Original,
            mime: FileMime::ApplicationPdf,
            destination: FileDestination::EmailMapi,
            pages: 4,
        },
    );
}

/// The first report is refused and the task stays open; the second ends it; the third finds none.
fn print() {
    let task = Task::<PrintBasic>::begin(&NOTHING);
    let mut details = PrintBasicDetails {
        subsystem: PrintSubsystem::Native,
        item: PrintItem::PhotoMulti,
        mime: PrintMime::ImageAny,
        page_size: PrintPageSize::Size4x6,
        pages: -1,
        ..Default::default()
    };
    task.complete("out of paper", &details);
    details.paper_size = "4x6 in";
    details.pages = 3;
    task.complete("error_OutOfPaper", &details);
    task.complete("success", &details);
}

fn play_day() -> bool {
    let tracking = Tracking { system_info: true, print_queue_info: false };
    let _session = Session::start("Scan Station", Why::StartApp, How::SmvLink, tracking).timeout(Duration::from_secs(30));
    let mut as_expected = !opt_in();
    agree();
    as_expected &= opt_in();
    track_system_information();
    track_print_queue_info();
    find_printers();
    set_device_up();
    preview();
    scan_and_send();
    print();
    {
        let _quiet = Pause::begin();
        as_expected &= !opt_in();
    }
    as_expected &= opt_in();
    flush(Duration::from_millis(500));
    set_opt_in(false);
    as_expected & !opt_in()
}

fn main() -> ExitCode {
    if std::env::args().len() > 1 && !use_worker_thread(0) {
        return ExitCode::from(2);
    }
    let as_expected = play_day();
    println!("{:?}", state());
    if as_expected { ExitCode::SUCCESS } else { ExitCode::FAILURE }
}
