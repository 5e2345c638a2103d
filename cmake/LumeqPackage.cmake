# What is installed, by component. All but the first two are installed only on request:
#   Runtime        the DLLs
#   Development    headers, import libraries, the CMake package, bindings of other languages
#   Samples        the sample hosts, and in a folder of their own the program that plays sessions and a companion library
#                  that writes to a file
#   Companion      LumeqRecords.h, which only the maker of the companion library needs
#   Tools          lumeq.exe
#   Documentation  the site, which tools/site builds for it
#   Test           the recording double in a folder of its own, with its import libraries and headers
include(CMakePackageConfigHelpers)
set(_package ${CMAKE_INSTALL_LIBDIR}/cmake/Lumeq)
set(_headers ${CMAKE_INSTALL_INCLUDEDIR}/Lumeq)
set(_data ${CMAKE_INSTALL_DATADIR}/Lumeq)

set(LUMEQ_DOUBLE_DESTINATION ${CMAKE_INSTALL_LIBDIR}/Lumeq/double)

configure_package_config_file(
  cmake/LumeqConfig.cmake.in ${PROJECT_BINARY_DIR}/LumeqConfig.cmake
  INSTALL_DESTINATION ${_package}
  PATH_VARS CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_BINDIR CMAKE_INSTALL_LIBDIR LUMEQ_DOUBLE_DESTINATION)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LumeqConfigVersion.cmake COMPATIBILITY SameMajorVersion)
configure_file(cmake/LumeqToolchain.cmake.in ${PROJECT_BINARY_DIR}/LumeqToolchain.cmake @ONLY)

install(TARGETS Lumeq EXPORT LumeqTargets RUNTIME COMPONENT Runtime ARCHIVE COMPONENT Development)
install(TARGETS LumeqC RUNTIME COMPONENT Runtime ARCHIVE COMPONENT Development)
if(TARGET LumeqC_lib)
  install(FILES ${PROJECT_BINARY_DIR}/LumeqC.lib DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
endif()
install(EXPORT LumeqTargets NAMESPACE Lumeq:: DESTINATION ${_package} COMPONENT Development)
install(FILES ${PROJECT_BINARY_DIR}/LumeqConfig.cmake ${PROJECT_BINARY_DIR}/LumeqConfigVersion.cmake
              ${PROJECT_BINARY_DIR}/LumeqToolchain.cmake cmake/LumeqC.cmake cmake/LumeqTest.cmake
        DESTINATION ${_package} COMPONENT Development)
install(FILES include/Lumeq/LumeqApi.h include/Lumeq/lumeq.h include/Lumeq/lumeq.hpp include/Lumeq/lumeq_loader.h
              include/Lumeq/lumeq_table.h ${PROJECT_BINARY_DIR}/include/Lumeq/LumeqToolchain.h
        DESTINATION ${_headers} COMPONENT Development)
install(DIRECTORY bindings DESTINATION ${_data} COMPONENT Development PATTERN target EXCLUDE PATTERN Cargo.lock EXCLUDE
                                                                PATTERN node_modules EXCLUDE)
install(FILES packaging/LumeqConfig.template.xml DESTINATION ${_data} COMPONENT Development)
# Without what only a web server or the site's makers need. The page for wrong addresses has links from the root.
install(CODE "execute_process(COMMAND \"${PROJECT_SOURCE_DIR}/tools/site\" COMMAND_ERROR_IS_FATAL ANY)" COMPONENT Documentation
        EXCLUDE_FROM_ALL)
install(DIRECTORY build/site/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Documentation EXCLUDE_FROM_ALL
        PATTERN *.map EXCLUDE PATTERN sitemap.xml* EXCLUDE PATTERN 404.html EXCLUDE)

if(TARGET lumeq_double)
  # The same file name as the library's, so never the same folder.
  install(TARGETS lumeq_double lumeq_c_double RUNTIME DESTINATION ${LUMEQ_DOUBLE_DESTINATION} COMPONENT Test EXCLUDE_FROM_ALL)
  install(FILES ${LUMEQ_TEST_IMPORT_LIBRARIES} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Test EXCLUDE_FROM_ALL)
  install(FILES include/Lumeq/lumeq_test.h include/Lumeq/lumeq_test_gtest.h DESTINATION ${_headers} COMPONENT Test
          EXCLUDE_FROM_ALL)
endif()

install(DIRECTORY samples/hosts samples/start samples/unit-tests DESTINATION ${_data}/samples COMPONENT Samples EXCLUDE_FROM_ALL)
if(TARGET lumeq_host)
  # Never beside Lumeq.dll, which would load this companion library.
  install(TARGETS lumeq_host lumeq_companion DESTINATION ${_data}/samples/bin COMPONENT Samples EXCLUDE_FROM_ALL)
endif()
install(FILES include/Lumeq/LumeqRecords.h DESTINATION ${_headers} COMPONENT Companion EXCLUDE_FROM_ALL)
