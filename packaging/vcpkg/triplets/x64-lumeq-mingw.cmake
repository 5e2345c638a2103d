# Include it in a triplet of your own, which sets the deployment's key. Do not copy it: it finds the toolchain file from
# its own place.
#   include(CHECKOUT/packaging/vcpkg/triplets/x64-lumeq-mingw.cmake)
#   set(LUMEQ_BIID_KEY <128 lower-case hexadecimal digits>)
set(VCPKG_TARGET_ARCHITECTURE x64)
set(VCPKG_CRT_LINKAGE dynamic)
set(VCPKG_LIBRARY_LINKAGE dynamic)
set(VCPKG_BUILD_TYPE release)
set(VCPKG_CMAKE_SYSTEM_NAME MinGW)
# Links the compiler's runtimes statically, as releases do.
set(VCPKG_CHAINLOAD_TOOLCHAIN_FILE "${CMAKE_CURRENT_LIST_DIR}/../../../cmake/mingw-w64.cmake")
