# Both functions want the target's OUTPUT_NAME to be set before.

# Sets the target's file name in the caller, without and with its suffix.
macro(_lumeq_file_name target)
  get_target_property(_name ${target} OUTPUT_NAME)
  if(NOT _name)
    set(_name ${target})
  endif()
  get_target_property(_type ${target} TYPE)
  set(_file ${_name}.dll)
  set(_file_type VFT_DLL)
  if(_type STREQUAL "EXECUTABLE")
    set(_file ${_name}.exe)
    set(_file_type VFT_APP)
  endif()
endmacro()

# lumeq_version_resource(target): gives a DLL or program the version of the project. The sample host has none, because
# Lumeq reports the version of its host.
function(lumeq_version_resource target)
  _lumeq_file_name(${target})
  set(_resource ${PROJECT_BINARY_DIR}/versions/${target}.rc)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/Version.rc.in ${_resource} @ONLY)
  target_sources(${target} PRIVATE ${_resource})
endfunction()

# lumeq_stripped(target): strips a DLL or program that ships. With LUMEQ_SYMBOLS, what was stripped goes to the folder
# symbols/<target>/ of the build:
#   <file>.debug   DWARF for gdb, addr2line and llvm-symbolizer, found by the file's .gnu_debuglink
#   <name>.pdb     functions and lines for WinDbg, Visual Studio and symbol servers, found by the file's build identifier.
#                  The linker writes it, from what tools/release/codeview.py adds to GCC's output.
#   <file>.map     what was linked, for the list of third parties
function(lumeq_stripped target)
  if(MSVC)
    return()
  elseif(NOT LUMEQ_SYMBOLS)
    target_link_options(${target} PRIVATE $<$<CONFIG:Release,MinSizeRel>:-s>)
    return()
  endif()
  _lumeq_file_name(${target})
  set(_symbols ${PROJECT_BINARY_DIR}/symbols/${target})
  file(MAKE_DIRECTORY ${_symbols})
  target_link_options(${target} PRIVATE -Wl,--build-id,--pdb=${_symbols}/${_name}.pdb,-Map,${_symbols}/${_file}.map)
  set(_debug ${_symbols}/${_file}.debug)
  # Otherwise both tools write the present time into the file.
  set(_timeless ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0)
  add_custom_command(
    TARGET ${target}
    POST_BUILD
    COMMAND ${_timeless} ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}> ${_debug}
    COMMAND ${_timeless} ${CMAKE_STRIP} $<TARGET_FILE:${target}>
    COMMAND ${_timeless} ${CMAKE_OBJCOPY} --add-gnu-debuglink=${_debug} $<TARGET_FILE:${target}>
    VERBATIM)
endfunction()
