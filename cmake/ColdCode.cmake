# lumeq_compile_for_size(target folder...): compiles the sources in these folders for size instead of speed. A
# precompiled header for speed does not fit them.
function(lumeq_compile_for_size target)
  get_target_property(_sources ${target} SOURCES)
  list(JOIN ARGN "|" _folders)
  list(FILTER _sources INCLUDE REGEX "/(${_folders})/")
  list(FILTER _sources EXCLUDE REGEX "${LUMEQ_HOT_SOURCES}")
  set_source_files_properties(
    ${_sources}
    PROPERTIES COMPILE_OPTIONS "$<$<CONFIG:Release>:$<IF:$<BOOL:${MSVC}>,/O1,-Os>>" SKIP_PRECOMPILE_HEADERS ON)
endfunction()
