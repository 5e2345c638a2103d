# The second compiler: clang with the headers and libraries of the MinGW-w64 g++ toolchain.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(_triple x86_64-w64-mingw32)
set(_gcc /usr/lib/gcc/${_triple}/12-posix)

foreach(_language C CXX)
  set(CMAKE_${_language}_COMPILER_TARGET ${_triple})
endforeach()
set(CMAKE_C_COMPILER clang-14)
set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_RC_COMPILER ${_triple}-windres)
set(CMAKE_AR ${_triple}-ar)
set(CMAKE_RANLIB ${_triple}-ranlib)
set(CMAKE_DLLTOOL ${_triple}-dlltool) # LLVM's cannot make delayed imports

# Each folder is named, because clang would otherwise choose its own C++ library.
set(_c_include "-isystem /usr/lib/llvm-14/lib/clang/14.0.6/include -isystem /usr/${_triple}/include")
set(_cxx_include
    "-isystem ${_gcc}/include/c++ -isystem ${_gcc}/include/c++/${_triple} -isystem ${_gcc}/include/c++/backward")
set(CMAKE_C_FLAGS_INIT "-nostdinc ${_c_include}")
# The C++ library was built by g++, whose thread-local variables are emulated on this target.
set(CMAKE_CXX_FLAGS_INIT "-nostdinc ${_cxx_include} ${_c_include} -femulated-tls -Qunused-arguments")
# lld drops the unwind information of functions of the C++ library, so an exception in them would end the process.
foreach(_kind EXE SHARED MODULE)
  set(CMAKE_${_kind}_LINKER_FLAGS_INIT "-fuse-ld=bfd -static -pthread -L${_gcc}")
endforeach()

# What -DCMAKE_PREFIX_PATH= names is for Windows too.
set(CMAKE_FIND_ROOT_PATH /usr/${_triple} ${CMAKE_PREFIX_PATH})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/run-wine)
