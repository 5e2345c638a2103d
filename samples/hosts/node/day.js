// A host in JavaScript: the day of ../day.jsonl. The libraries are beside the executable, as in an Electron application.
// Any argument chooses the worker thread.
'use strict';

const path = require('path');
const lumeq = require('../../../bindings/node/lumeq.js');

const call = lumeq.load(path.dirname(process.execPath));

function agree() {
    const consent = { flow: 'welcome', screen_name: 'Consent' };
    call.screen_displayed(lumeq.screen({ ...consent, local_context: lumeq.dictionary({ language: 'de-AT' }) }));
    call.checkbox_changed(lumeq.screen(consent), 'agree', 1);
    call.set_opt_in(1);
}

function findPrinters() {
    const biid = uuid => lumeq.text((buffer, size) => call.get_biid(uuid, buffer, size));
    biid('1c852a4d-b800-1f08-abcd-3c52821f9ab0');
    biid('1c852a4d-b800-1f08-abcd-3c52821f9ab1');
    const devices = [
        { dev_biid: 'unknown', dev_modelname: 'Model 8100', dev_connection: 'wifi' },
        {},
        {
            dev_biid: '0123456789abcdef0123456789abcdef0123456789abcdef0123456789abcdef',
            dev_modelname: 'Model 400',
        },
    ].map(lumeq.dictionary);
    call.track_discovered_printers(devices, devices.length);
    call.set_global_context('Model 8100');
}

function setDeviceUp() {
    const connection = call.device_connect_begin(lumeq.dictionary({ attempt: '1' }), null);
    const installation = call.software_install_begin(null, null);
    call.software_install_complete(installation, 'success', lumeq.software_install({
        installer: lumeq.installer.msi,
        name: 'scan-station.msi',
        version: '2.14.0',
    }));
    call.device_connect_complete(connection, 'success', lumeq.device_connect({
        scenario: lumeq.connection_scenario.add,
        method: lumeq.connection_method.auto_wireless_connect,
    }));
    const configuration = call.device_config_begin(null, null);
    call.device_config_complete(configuration, 'error_Timeout',
        lumeq.device_config({ setting: lumeq.setting.webservices_registration }));
}

function preview() {
    const screen = lumeq.screen({ flow: 'scan', screen_name: 'Preview', mode: 'document' });
    call.screen_displayed(screen);
    call.button_clicked(screen, 'not a name');
    call.ad_displayed(screen, 'offer',
        lumeq.ad({ type: lumeq.ad_type.tile, product: 'ink', name: 'spring offer', variant: 'b' }));
}

function scanAndSend() {
    const scan = call.scan_acquire_begin(lumeq.dictionary({ source: 'feeder' }), null);
    call.scan_acquire_complete(scan, 'success', lumeq.scan_acquire({
        shortcut: lumeq.scan_shortcut.save_pdf,
        shortcut_variance: lumeq.scan_shortcut_variance.original,
        item: lumeq.scan_item.document,
        resolution: lumeq.scan_resolution.dpi_300,
        color_mode: lumeq.scan_color_mode.color,
        page_size: lumeq.scan_page_size.a4,
        source: lumeq.scan_source.adf_duplex_book,
        mime: lumeq.scan_mime.application_pdf,
        ...lumeq.features({ deskew: true, remove_blank_pages: false }),
        pages: 4,
    }));
    const sending = call.file_send_to_begin(null, null);
    call.file_send_to_complete(sending, 'success', lumeq.file_send_to({
        shortcut: lumeq.file_shortcut.email_pdf,
        shortcut_variance: lumeq.file_shortcut_variance.original,
        mime: lumeq.file_mime.application_pdf,
        destination: lumeq.file_destination.email_mapi,
        pages: 4,
    }));
}

// The first report is refused and the task stays open; the second ends it; the third finds none.
function print() {
    const task = call.print_basic_begin(null, null);
    const details = lumeq.print_basic({
        subsystem: lumeq.print_subsystem.native,
        item: lumeq.print_item.photo_multi,
        mime: lumeq.print_mime.image_any,
        page_size: lumeq.print_page_size.size_4x6,
        pages: -1,
    });
    call.print_basic_complete(task, 'out of paper', details);
    const done = { ...details, paper_size: '4x6 in', pages: 3 };
    call.print_basic_complete(task, 'error_OutOfPaper', done);
    call.print_basic_complete(task, 'success', done);
}

function playDay() {
    const answers = [];
    call.startup('Scan Station', lumeq.why.start_app, lumeq.how.smv_link, 1, 0);
    answers.push(call.get_opt_in());
    agree();
    answers.push(call.get_opt_in());
    call.track_system_information();
    call.track_print_queue_info();
    findPrinters();
    setDeviceUp();
    preview();
    scanAndSend();
    print();
    call.pause();
    answers.push(call.get_opt_in());
    call.resume();
    answers.push(call.get_opt_in());
    call.flush(500);
    call.set_opt_in(0);
    answers.push(call.get_opt_in());
    call.shutdown(30000);
    return answers.join() === '0,1,0,1,0';
}

call.configure(lumeq.options({ use_worker_thread: process.argv.length > 2 ? 1 : 0 }));
const asExpected = playDay();
console.log(lumeq.state(call));
process.exitCode = asExpected ? 0 : 1;
