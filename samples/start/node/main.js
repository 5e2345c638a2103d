// A first host in JavaScript, for Node and Electron.
'use strict';

const path = require('path');
const lumeq = require('lumeq');

// [run]
const call = lumeq.load(path.dirname(process.execPath)); // the folder of both DLLs
call.configure(lumeq.options({ use_worker_thread: 1 })); // No call below holds the event loop.

call.startup('Scan Studio', lumeq.why.start_app, lumeq.how.desktop_shortcut, 0, 0);
call.set_opt_in(1); // What the user answered.

const home = lumeq.screen({ flow: 'setup', screen_name: 'Home' });
call.screen_displayed(home);
call.button_clicked(home, 'scan');
// [/run]

// [task]
const scan = call.scan_acquire_begin(null, 'Tarvik 3000');
// ... the scan ...
const details = lumeq.scan_acquire({ color_mode: lumeq.scan_color_mode.color, pages: 3 });
call.scan_acquire_complete(scan, 'success', details);

call.shutdown(10000);
// [/task]
