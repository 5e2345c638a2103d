# An overlay port of the checkout that it stands in. The triplet sets LUMEQ_BIID_KEY, the deployment's key.
get_filename_component(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../../.." ABSOLUTE)
vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)
if(NOT DEFINED LUMEQ_BIID_KEY)
  message(FATAL_ERROR "Set LUMEQ_BIID_KEY in the triplet: 128 lower-case hexadecimal digits, kept by your deployment.")
endif()

vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS -DLUMEQ_TESTS=OFF -DLUMEQ_DEVELOPMENT=OFF "-DLUMEQ_BIID_KEY=${LUMEQ_BIID_KEY}")
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME Lumeq CONFIG_PATH lib/cmake/Lumeq)

file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
vcpkg_install_copyright(FILE_LIST "${CMAKE_CURRENT_LIST_DIR}/copyright")
