// The smallest service, in Rust: it waits until it is stopped.
//
//     rustc --crate-type cdylib -C panic=abort -C link-args="$(pkg-config --libs launcher)" -o libagent.so agent.rs

use std::ffi::CStr;
use std::os::raw::{c_char, c_int};
use std::sync::{Condvar, Mutex};

// Initialised statically, since StopService may be called before Bootstrap.
static STOPPED: Mutex<bool> = Mutex::new(false);
static STOP_REQUESTED: Condvar = Condvar::new();

#[no_mangle]
pub extern "C" fn Bootstrap(argc: c_int, argv: *const *const c_char) -> c_int {
    let name = unsafe { CStr::from_ptr(*argv) }.to_string_lossy();
    println!("{} runs, with {} parameters", name, argc - 1);
    let mut stopped = STOPPED.lock().unwrap();
    while !*stopped {
        stopped = STOP_REQUESTED.wait(stopped).unwrap();
    }
    println!("agent ends");
    0
}

#[no_mangle]
pub extern "C" fn StopService() -> c_int {
    *STOPPED.lock().unwrap() = true;
    STOP_REQUESTED.notify_one();
    0
}
