# Header-only packages of the build host, each seen through a folder of the build tree that holds nothing
# else: the host's own /usr/include must never come into a cross-build.
function(lumeq_host_headers target folder probe)
  find_path(_${folder}_root ${probe} PATHS /usr/include /usr/local/include NO_DEFAULT_PATH
                                                                          NO_CMAKE_FIND_ROOT_PATH)
  if(NOT _${folder}_root)
    message(FATAL_ERROR "${probe} was not found; README.md names the packages to install")
  endif()
  set(_view ${PROJECT_BINARY_DIR}/host-headers/${folder})
  file(MAKE_DIRECTORY ${_view})
  file(CREATE_LINK ${_${folder}_root}/${folder} ${_view}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${_view})
endfunction()
