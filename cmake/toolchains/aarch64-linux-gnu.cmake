# Linux on 64-bit ARM, from Debian: g++-aarch64-linux-gnu; qemu-user runs the tests.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(CMAKE_C_COMPILER aarch64-linux-gnu-gcc)
set(CMAKE_CXX_COMPILER aarch64-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-aarch64;-L;/usr/aarch64-linux-gnu)
list(APPEND CMAKE_FIND_ROOT_PATH /usr/aarch64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/search.cmake)
