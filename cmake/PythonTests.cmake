# Tests written in Python, with the standard library alone.
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# The compiler in one line, with what it needs to build for Windows.
set(LUMEQ_CXX "${CMAKE_CXX_COMPILER} ${CMAKE_CXX_FLAGS}")
if(CMAKE_CXX_COMPILER_TARGET)
  string(APPEND LUMEQ_CXX " --target=${CMAKE_CXX_COMPILER_TARGET}")
endif()

# The second compiler in one line, as its own toolchain file tells.
function(lumeq_second_compiler result)
  include(${PROJECT_SOURCE_DIR}/cmake/mingw-w64-clang.cmake)
  set(${result} "${CMAKE_CXX_COMPILER} --target=${CMAKE_CXX_COMPILER_TARGET} ${CMAKE_CXX_FLAGS_INIT}" PARENT_SCOPE)
endfunction()

# Where nothing of a file could run here. A file that ran in part counts for what it ran; its own output tells the rest.
set(LUMEQ_WHOLLY_SKIPPED "Ran 0 tests in [^\n]*\n\nOK \\(skipped=")

# lumeq_python_test(label file [suffix]): one test, named by label and file, and begun before the short ones.
function(lumeq_python_test label file)
  get_filename_component(_name ${file} NAME_WE)
  set(_test ${label}.${_name}${ARGN})
  add_test(NAME ${_test} COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_SOURCE_DIR}/${file} -v)
  set(_environment LUMEQ_BUILD_DIR=${PROJECT_BINARY_DIR} LUMEQ_TOOLCHAIN_FILE=${CMAKE_TOOLCHAIN_FILE}
                   LUMEQ_CXX=${LUMEQ_CXX} LUMEQ_OBJDUMP=${CMAKE_OBJDUMP})
  set_tests_properties(${_test} PROPERTIES LABELS ${label} COST 10 TIMEOUT 900 ENVIRONMENT "${_environment}"
                                           SKIP_REGULAR_EXPRESSION "${LUMEQ_WHOLLY_SKIPPED}")
endfunction()
