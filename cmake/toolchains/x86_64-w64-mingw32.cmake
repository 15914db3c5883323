# 64-bit Windows, from Debian: g++-mingw-w64-x86-64-posix; wine runs the tests.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
# The compiler's own libraries go into each program and DLL: nothing else has to be installed.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
list(APPEND CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/search.cmake)
