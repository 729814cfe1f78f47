# CMake toolchain file for the cross build. A copy is installed at the top of the built tool chain, so every
# prefix is found relative to this file and the whole folder can be moved to another machine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_SYSTEM_VERSION 10)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# One list for every prefix: a list given on the command line would be overridden by this one.
set(CMAKE_FIND_ROOT_PATH
    ${CMAKE_CURRENT_LIST_DIR}/target
    ${CMAKE_CURRENT_LIST_DIR}/codecs
    /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# mingw-w64 10 has UI Automation headers from before Windows 8; newer ones lie in a folder of their own.
set(CMAKE_C_FLAGS_INIT "-isystem ${CMAKE_CURRENT_LIST_DIR}/uiautomation")
set(CMAKE_CXX_FLAGS_INIT "-isystem ${CMAKE_CURRENT_LIST_DIR}/uiautomation")

# The stack protector needs its library at link time as well (libssp).
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fstack-protector-strong")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-fstack-protector-strong")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-fstack-protector-strong")
