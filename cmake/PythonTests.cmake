# Tests written in Python, with the standard library alone.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# The compiler in one line, with the options to build for Windows.
set(LUMEQ_CXX "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_FLAGS}")
if(CMAKE_CXX_COMPILER_TARGET)
  string(APPEND LUMEQ_CXX " --target=${CMAKE_CXX_COMPILER_TARGET}")
endif()

# The second compiler in one line, as its toolchain file sets it.
function(lumeq_second_compiler result)
  include(${PROJECT_SOURCE_DIR}/cmake/mingw-w64-clang.cmake)
  set(${result} "${CMAKE_CXX_COMPILER} --target=${CMAKE_CXX_COMPILER_TARGET} ${CMAKE_CXX_FLAGS_INIT}" PARENT_SCOPE)
endfunction()

# Printed where no test of a file could run. A file that ran in part counts as what it ran.
set(LUMEQ_WHOLLY_SKIPPED "Ran 0 tests in [^\n]*\n\nOK \\(skipped=")

# lumeq_python_test(label file [suffix]): one test, named after label and file, that starts before the short ones.
function(lumeq_python_test label file)
  get_filename_component(_name ${file} NAME_WE)
  set(_test ${label}.${_name}${ARGN})
  add_test(NAME ${_test} COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/${file} -v)
  set(_environment LUMEQ_BUILD_DIR=${PROJECT_BINARY_DIR} LUMEQ_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE}
                   LUMEQ_CXX=${LUMEQ_CXX} LUMEQ_OBJDUMP=${CMAKE_OBJDUMP})
  set_tests_properties(${_test} PROPERTIES LABELS ${label} COST 10 TIMEOUT 900 ENVIRONMENT "${_environment}"
                                           SKIP_REGULAR_EXPRESSION "${LUMEQ_WHOLLY_SKIPPED}")
endfunction()

# lumeq_only_with_all(test...): leaves them to ./check --all. They keep their label, so other presets run them.
function(lumeq_only_with_all)
  foreach(_test IN LISTS ARGN)
    set_property(TEST ${_test} APPEND PROPERTY LABELS all)
  endforeach()
endfunction()

# lumeq_python_tests(label): all files of the folder whose names end in _tests.py.
function(lumeq_python_tests label)
  file(GLOB _files CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *_tests.py)
  foreach(_file IN LISTS _files)
    lumeq_python_test(${label} ${_file})
  endforeach()
endfunction()
