# Linux on 32-bit x86, from Debian: g++-i686-linux-gnu; qemu-user runs the tests.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_COMPILER i686-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER i686-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-i386;-L;/usr/i686-linux-gnu)
list(APPEND CMAKE_FIND_ROOT_PATH /usr/i686-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/search.cmake)
