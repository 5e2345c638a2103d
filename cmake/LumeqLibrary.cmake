# Lumeq.dll: the objects of lumeq_core, plus the export list.
add_library(Lumeq SHARED $<TARGET_OBJECTS:lumeq_core> $<TARGET_OBJECTS:lumeq_core_cold> LumeqApi/Lumeq.def)
add_library(Lumeq::Lumeq ALIAS Lumeq)
set_target_properties(Lumeq PROPERTIES PREFIX "" IMPORT_PREFIX "" LINKER_LANGUAGE CXX)
target_include_directories(
  Lumeq INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
                  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
if(MINGW)
  include(cmake/DelayedImports.cmake)
  lumeq_delayed_imports()
  add_dependencies(Lumeq lumeq_delayed_imports)
  add_subdirectory(Runtime)
  target_sources(Lumeq PRIVATE $<TARGET_OBJECTS:lumeq_allocation>)
endif()
# The delayed ones come first, because the linker takes the first that it finds.
target_link_libraries(Lumeq PRIVATE lumeq_options ${LUMEQ_DELAYED_IMPORTS} lumeq_system)

# lumeq_dll_options(target): what the linker is told for each DLL of ours.
function(lumeq_dll_options target)
  if(MSVC)
    target_link_options(${target} PRIVATE /DYNAMICBASE /HIGHENTROPYVA /NXCOMPAT /Brepro)
  else()
    target_link_options(
      ${target}
      PRIVATE
      -Wl,--dynamicbase,--high-entropy-va,--nxcompat,--exclude-all-symbols)
  endif()
  lumeq_version_resource(${target})
  lumeq_stripped(${target})
  if(MINGW)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:lumeq_runtime>)
  endif()
endfunction()
lumeq_dll_options(Lumeq)
