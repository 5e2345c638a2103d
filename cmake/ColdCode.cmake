# lumeq_compile_for_size(target except folder...): compiles the sources in these folders for size instead of speed, save
# those whose path in the project matches the pattern `except`. They cannot use a precompiled header made for speed.
function(lumeq_compile_for_size target except)
  list(JOIN ARGN "|" _folders)
  get_target_property(_sources ${target} SOURCES)
  foreach(_source IN LISTS _sources)
    file(RELATIVE_PATH _name ${PROJECT_SOURCE_DIR} ${_source})
    if(_name MATCHES "^(${_folders})/" AND NOT _name MATCHES "${except}")
      set_source_files_properties(
        ${_source} PROPERTIES COMPILE_OPTIONS "$<$<CONFIG:Release>:$<IF:$<BOOL:${MSVC}>,/O1,-Os>>"
                              SKIP_PRECOMPILE_HEADERS ON)
    endif()
  endforeach()
endfunction()
