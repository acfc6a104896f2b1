# Windows x86-64 by MinGW-w64; the programs run under Wine.
#
# The posix flavour: the win32 one has no std::thread in GCC 12, and the tests use it.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
# C for Google Test, whose project asks for it.
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/find_rules.cmake)

# Debian's wine64 alone puts its loader outside the search path.
find_program(HALVORN_WINE NAMES wine64 wine PATHS /usr/lib/wine)
if(HALVORN_WINE)
  set(CMAKE_CROSSCOMPILING_EMULATOR env WINEDEBUG=-all WINEDLLOVERRIDES=mscoree,mshtml=
    WINEPREFIX=${CMAKE_BINARY_DIR}/wine ${HALVORN_WINE})
endif()
