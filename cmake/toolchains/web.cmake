# WebAssembly by Debian's Emscripten: one module without glue, which web/module/ loads.
set(HALVORN_EMSCRIPTEN /usr/share/emscripten CACHE PATH "Where Emscripten is installed")
include(${HALVORN_EMSCRIPTEN}/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Exceptions of the engine itself, without a detour through JavaScript for each call that may throw.
# Headers of web/libcxx stand before those of libc++, which lacks them.
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions -isystem ${CMAKE_CURRENT_LIST_DIR}/../../web/libcxx")
# Smaller by a tenth than -O3, and as quick.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG" CACHE STRING "Optimised")
