# Header-only packages of the build host. Each is linked into a folder of the build tree of its own, because the host's
# /usr/include must never enter a cross-build.
function(lumeq_host_headers target folder probe)
  find_path(_${folder}_root ${probe} PATHS /usr/include /usr/local/include NO_DEFAULT_PATH
                                                                          NO_CMAKE_FIND_ROOT_PATH)
  if(NOT _${folder}_root)
    message(FATAL_ERROR "${probe} was not found; tools/setup installs the packages")
  endif()
  set(_view ${PROJECT_BINARY_DIR}/host-headers/${folder})
  file(MAKE_DIRECTORY ${_view})
  file(CREATE_LINK ${_${folder}_root}/${folder} ${_view}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${_view})
endfunction()
