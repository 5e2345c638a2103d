# Lumeq::Test, the functions of lumeq_test.h, and a helper that puts a unit test on the recording double.
set(_lumeq_test_library "${_lumeq_lib}/LumeqTest.lib")
if(MINGW)
  set(_lumeq_test_library "${_lumeq_lib}/libLumeqTest.dll.a")
endif()
if(NOT EXISTS ${_lumeq_test_library} OR NOT EXISTS ${_lumeq_double}/Lumeq.dll)
  _lumeq_refuse(Test "The recording double is not installed: install the component Test of Lumeq.")
  return()
endif()
if(NOT TARGET Lumeq::Test)
  # No shared library, so that $<TARGET_RUNTIME_DLLS:...> of a product never copies the double.
  add_library(Lumeq::Test INTERFACE IMPORTED)
  set_target_properties(Lumeq::Test PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${Lumeq_INCLUDE_DIR}
                                               INTERFACE_LINK_LIBRARIES ${_lumeq_test_library})
endif()
set(LUMEQ_DOUBLE_DLLS ${_lumeq_double}/Lumeq.dll ${_lumeq_double}/LumeqC.dll)

# lumeq_use_double(target): builds the unit test `target` into a folder of its own, where it finds the double instead of the
# real Lumeq.dll, and links Lumeq::Test.
function(lumeq_use_double target)
  target_link_libraries(${target} PRIVATE Lumeq::Test)
  set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${target}-on-double)
  add_custom_command(
    TARGET ${target}
    POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${LUMEQ_DOUBLE_DLLS} $<TARGET_FILE_DIR:${target}>
    VERBATIM)
endfunction()
