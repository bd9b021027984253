# 64-bit Windows from Linux: GCC of mingw-w64 with POSIX threads, and Wine to run what was built.
# scripts/test-windows builds the dependencies and tells where they are in ORV_WINDOWS_DEPENDENCIES.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

set(CMAKE_FIND_ROOT_PATH $ENV{ORV_WINDOWS_DEPENDENCIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The dependencies are static, and the C runtime is to format as ISO C says.
set(CMAKE_CXX_FLAGS_INIT "-DXERCES_STATIC_LIBRARY -D__USE_MINGW_ANSI_STDIO=1")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/internal/wine)
