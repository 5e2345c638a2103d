// Lumeq for Node and Electron on 64-bit Windows: lumeq.h by the foreign-function interface koffi.
//
// `load` returns the functions of lumeq.h by their names without "lumeq_". They take numbers (flags are 0 and 1),
// strings or null, and the structs that the functions below make. A call blocks the event loop until it returns, so
// begin with `configure(options({ use_worker_thread: 1 }))`.
'use strict';

const koffi = require('koffi');
const path = require('path');
const { functions, abi_number, ...constants } = require('./raw.js');

/** Loads both DLLs from a folder, by their full paths. Throws if they cannot be loaded or do not fit. */
function load(folder) {
    // LumeqC.dll imports it by its name, and Windows would search for it.
    koffi.load(path.resolve(folder, 'Lumeq.dll'));
    const calls = functions(koffi.load(path.resolve(folder, 'LumeqC.dll')));
    if (calls.abi() !== abi_number)
        throw new Error('LumeqC.dll does not fit this host');
    return calls;
}

/** What makes a struct: fields that are left out are null or zero. */
const struct = name => (fields = {}) => ({ ...fields, size: koffi.sizeof(name) });

/** Free-form fields of an event, a form or a device: dictionary({ paper: 'a4' }). */
function dictionary(values) {
    const fields = Object.entries(values).map(([name, value]) => ({ name, value }));
    return { fields, count: fields.length };
}

/** The two fields of a scan_acquire that hold its features: features({ deskew: true }). */
function features(values) {
    const list = Object.entries(values).map(([name, is_on]) => ({ name, is_on: is_on ? 1 : 0, reserved: 0 }));
    return { features: list, feature_count: list.length };
}

/** The text that a function writes into a buffer: text((buffer, size) => calls.get_biid(uuid, buffer, size)). */
function text(write, size = 128) {
    const buffer = new Uint16Array(size);
    const needed = write(buffer, size);
    if (needed > size)
        return text(write, needed);
    return String.fromCharCode(...buffer.subarray(0, Math.max(needed - 1, 0)));
}

/** What telemetry is doing, with the fields of lumeq_state; all unknown or zero while the process ends. */
function state(calls) {
    const its = struct('lumeq_state')();
    calls.get_state(its);
    return its;
}

module.exports = {
    ...constants,
    load,
    dictionary,
    features,
    text,
    state,
    options: struct('lumeq_options'),
    screen: struct('lumeq_screen'),
    ad: struct('lumeq_ad'),
    form: struct('lumeq_form'),
    scan_acquire: struct('lumeq_scan_acquire'),
    print_basic: struct('lumeq_print_basic'),
    file_send_to: struct('lumeq_file_send_to'),
    device_connect: struct('lumeq_device_connect'),
    device_config: struct('lumeq_device_config'),
    software_install: struct('lumeq_software_install'),
};
