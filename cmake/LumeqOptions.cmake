# The compile options of our own targets, and the options of the configuration.
option(LUMEQ_DEVELOPMENT "Build the sample host, the companion stand-in and the tools" ON)
option(LUMEQ_TESTS "Build the tests" ON)
option(LUMEQ_BENCHMARKS "Build the benchmark" OFF)
option(LUMEQ_SYMBOLS "Write the symbols of what ships to separate files" OFF)
option(LUMEQ_CHECKED "Build with undefined-behaviour traps and the standard library's assertions" OFF)

if(MSVC)
  set(LUMEQ_STANDARD_LIBRARY MSVC_STL)
else()
  set(LUMEQ_STANDARD_LIBRARY LIBSTDCXX)
endif()

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(lumeq_options INTERFACE)
target_compile_features(lumeq_options INTERFACE cxx_std_20)
target_compile_definitions(
  lumeq_options INTERFACE UNICODE _UNICODE NOMINMAX NOGDI WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601
                          $<$<BOOL:${MSVC}>:_SILENCE_CXX17_CODECVT_HEADER_DEPRECATION_WARNING>)
if(MSVC)
  # extern "C" functions throw here: the companion library's operations, and a failed lock.
  string(REPLACE "/EHsc" "/EHs" CMAKE_CXX_FLAGS "${CMAKE_CXX_FLAGS}")
  target_compile_options(lumeq_options INTERFACE /W4 /WX /utf-8 /permissive- /constexpr:steps20000000)
else()
  target_compile_options(
    lumeq_options INTERFACE -Wall -Wextra -Werror -fstack-protector-strong
                            $<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
  target_link_options(lumeq_options INTERFACE -fstack-protector-strong -Wl,--no-insert-timestamp)
  if(LUMEQ_SYMBOLS)
    # No file shows where it was built, so builds in different folders are equal. The last one that fits counts.
    target_compile_options(lumeq_options INTERFACE -g -ffile-prefix-map=${PROJECT_SOURCE_DIR}=/lumeq
                                                   -ffile-prefix-map=${PROJECT_BINARY_DIR}=/lumeq/build)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(lumeq_options INTERFACE
                             "SHELL:-wrapper python3,${PROJECT_SOURCE_DIR}/tools/release/codeview.py")
    endif()
  endif()
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # Making patterns into tables takes more steps than Clang allows by default.
    target_compile_options(lumeq_options INTERFACE -fconstexpr-steps=20000000 -Wthread-safety)
  endif()
  if(LUMEQ_CHECKED)
    target_compile_options(lumeq_options INTERFACE -fsanitize=undefined -fsanitize-undefined-trap-on-error)
    target_compile_definitions(lumeq_options INTERFACE _GLIBCXX_ASSERTIONS)
  endif()
endif()
