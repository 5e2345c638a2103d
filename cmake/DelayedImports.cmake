# The DLL's delayed imports, all from the one list Runtime/DelayedFunctions.txt.
set(LUMEQ_DELAYED_FOLDER ${PROJECT_BINARY_DIR}/delayed)

# Writes DelayedFunctions.inc, the rows of the table in Runtime/DelayedImports.cpp, and DelayedSlots.h, by which tests find
# the place that holds a function's address. Sets LUMEQ_DELAYED_IMPORTS to the import libraries, which are to be linked
# before the ordinary ones, and makes them.
function(lumeq_delayed_imports)
  set(_list ${PROJECT_SOURCE_DIR}/Runtime/DelayedFunctions.txt)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${_list})
  file(STRINGS ${_list} _rows REGEX "^[a-z]")
  foreach(_row IN LISTS _rows)
    string(REPLACE " " ";" _row "${_row}")
    list(GET _row 0 _library)
    list(GET _row 1 _function)
    list(GET _row 2 _missing)
    list(APPEND _libraries ${_library})
    string(APPEND _functions_${_library} "${_function}\n")
    string(APPEND _table "{\"${_function}\", Address(&Missing::${_missing})},\n")
    string(APPEND _declarations "extern \"C\" void* __imp_${_function};\n")
    string(APPEND _slots "    {\"${_function}\", &__imp_${_function}},\n")
  endforeach()
  file(CONFIGURE OUTPUT ${LUMEQ_DELAYED_FOLDER}/DelayedFunctions.inc CONTENT "${_table}")
  file(CONFIGURE OUTPUT ${LUMEQ_DELAYED_FOLDER}/DelayedSlots.h
       CONTENT "#pragma once\n${_declarations}\ninline const struct {\n    const char* function;\n    void** slot;\n}\
 DelayedSlots[] = {\n${_slots}};\n")

  list(REMOVE_DUPLICATES _libraries)
  foreach(_library IN LISTS _libraries)
    set(_definition ${LUMEQ_DELAYED_FOLDER}/${_library}.def)
    set(_import ${LUMEQ_DELAYED_FOLDER}/lib${_library}.a)
    file(CONFIGURE OUTPUT ${_definition} CONTENT "LIBRARY ${_library}.dll\nEXPORTS\n${_functions_${_library}}")
    # By bare names, because their symbols are made of them.
    add_custom_command(
      OUTPUT ${_import}
      COMMAND ${CMAKE_DLLTOOL} -m i386:x86-64 -d ${_library}.def -y lib${_library}.a
      DEPENDS ${_definition}
      WORKING_DIRECTORY ${LUMEQ_DELAYED_FOLDER}
      VERBATIM)
    list(APPEND _imports ${_import})
  endforeach()
  add_custom_target(lumeq_delayed_imports DEPENDS ${_imports})
  set(LUMEQ_DELAYED_IMPORTS ${_imports} PARENT_SCOPE)
endfunction()
