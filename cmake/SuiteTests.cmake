# Tests by suite, for programs whose cases need no process of their own: starting one takes longer than most cases.

# lumeq_suite_tests(target label filter [alone]): one test for each suite that GoogleTest's `filter` matches, found when
# the tests are run. One that comes to run nothing fails. The cases that `alone` matches are left out: they get a process
# each with gtest_discover_tests.
function(lumeq_suite_tests target label filter)
  set(_alone "")
  if(ARGN)
    set(_alone ":-${ARGN}")
  endif()
  set(_file ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  file(
    GENERATE
    OUTPUT ${_file}
    CONTENT
      "set(program \"${CMAKE_CROSSCOMPILING_EMULATOR}\" \"$<TARGET_FILE:${target}>\")
execute_process(COMMAND \${program} --gtest_list_tests --gtest_filter=${filter}${_alone}
                OUTPUT_VARIABLE listed RESULT_VARIABLE result ERROR_QUIET TIMEOUT 120)
string(REGEX MATCHALL \"(^|\\n)[^ \\r\\n]+[.]\" suites \"\${listed}\")
if(NOT result EQUAL 0 OR NOT suites)
  message(FATAL_ERROR \"${target} does not list its tests\")
endif()
foreach(suite IN LISTS suites)
  string(STRIP \"\${suite}\" suite)
  string(REGEX REPLACE \"[.]$\" \"\" suite \"\${suite}\")
  add_test(\${suite} \${program} --gtest_filter=\${suite}.*${_alone})
  set_tests_properties(\${suite} PROPERTIES LABELS ${label} FAIL_REGULAR_EXPRESSION \"Running 0 tests\")
endforeach()
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${_file})
endfunction()
