# WebAssembly by Debian's Emscripten: one module without glue, which web/module/ loads.
set(HALVORN_EMSCRIPTEN /usr/share/emscripten CACHE PATH "Where Emscripten is installed")
include(${HALVORN_EMSCRIPTEN}/cmake/Modules/Platform/Emscripten.cmake)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Exceptions of the engine itself, without a detour through JavaScript for each call that may throw.
# Headers of web/libcxx stand before those of libc++, which lacks them.
set(CMAKE_CXX_FLAGS_INIT "-fwasm-exceptions -isystem ${CMAKE_CURRENT_LIST_DIR}/../../web/libcxx")
# As quick as -O3 with all its copies of loops and functions, and smaller by a sixth.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG -fno-unroll-loops -mllvm -inline-threshold=60"
  CACHE STRING "Optimised")
