# Lumeq::C and Lumeq::Loader, for any compiler and language, so nothing here asks about them but the format of the import
# library: MinGW's, or that of Microsoft's and LLVM's linkers.
if(_lumeq_component STREQUAL "Loader")
  if(NOT TARGET Lumeq::Loader)
    add_library(Lumeq::Loader INTERFACE IMPORTED)
    set_target_properties(Lumeq::Loader PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${Lumeq_INCLUDE_DIR}
                                                   INTERFACE_COMPILE_DEFINITIONS LUMEQ_USE_LOADER)
  endif()
  return()
endif()

set(_lumeq_import_library ${_lumeq_lib}/LumeqC.lib)
if(MINGW)
  set(_lumeq_import_library ${_lumeq_lib}/libLumeqC.dll.a)
endif()
if(NOT EXISTS ${_lumeq_import_library})
  _lumeq_refuse(C "This installation has no import library for this compiler: ${_lumeq_import_library}.")
elseif(NOT TARGET Lumeq::C)
  # Not linked, but copied with $<TARGET_RUNTIME_DLLS:...>.
  add_library(Lumeq::Core SHARED IMPORTED)
  set_target_properties(Lumeq::Core PROPERTIES IMPORTED_LOCATION ${_lumeq_bin}/Lumeq.dll IMPORTED_IMPLIB
                                                                                         ${_lumeq_import_library})
  add_library(Lumeq::C SHARED IMPORTED)
  set_target_properties(Lumeq::C PROPERTIES IMPORTED_LOCATION ${_lumeq_bin}/LumeqC.dll
                                            IMPORTED_IMPLIB ${_lumeq_import_library}
                                            IMPORTED_LINK_DEPENDENT_LIBRARIES Lumeq::Core
                                            INTERFACE_INCLUDE_DIRECTORIES ${Lumeq_INCLUDE_DIR})
endif()
