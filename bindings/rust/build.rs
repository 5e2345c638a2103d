//! The environment variable LUMEQ_LIB_DIR names the folder of libLumeqC.dll.a and LumeqC.lib.
fn main() {
    println!("cargo:rerun-if-env-changed=LUMEQ_LIB_DIR");
    if let Ok(folder) = std::env::var("LUMEQ_LIB_DIR") {
        println!("cargo:rustc-link-search=native={folder}");
    }
}
