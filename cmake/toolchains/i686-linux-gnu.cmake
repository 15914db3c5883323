# Linux on 32-bit x86, from Debian: g++-i686-linux-gnu. Programs start without an emulator on
# x86-64: they name the loader and the libraries of that package.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-Wl,--dynamic-linker=/usr/i686-linux-gnu/lib/ld-linux.so.2 -Wl,-rpath,/usr/i686-linux-gnu/lib")
list(APPEND CMAKE_FIND_ROOT_PATH /usr/i686-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/search.cmake)
