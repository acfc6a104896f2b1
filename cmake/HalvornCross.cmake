# What a cross build takes from the build machine: packages of headers alone, Google Test's sources,
# and for Windows the compiler's runtime DLLs.

# Makes a package of headers alone known, by links to its headers and its CMake files, which are in
# cmake_folder under /usr/share, in a folder of their own: /usr/include itself would put the build
# machine's C library before the target's.
function(halvorn_borrow_headers package folder cmake_folder)
  find_path(HALVORN_${package}_HEADERS ${folder} PATHS /usr/include
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  find_path(HALVORN_${package}_CMAKE ${package}Config.cmake PATHS /usr/share/${cmake_folder}
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  if(NOT HALVORN_${package}_HEADERS OR NOT HALVORN_${package}_CMAKE)
    return()
  endif()
  set(prefix ${PROJECT_BINARY_DIR}/borrowed)
  cmake_path(GET cmake_folder PARENT_PATH above)
  file(MAKE_DIRECTORY ${prefix}/include ${prefix}/share/${above})
  file(CREATE_LINK ${HALVORN_${package}_HEADERS}/${folder} ${prefix}/include/${folder} SYMBOLIC)
  file(CREATE_LINK ${HALVORN_${package}_CMAKE} ${prefix}/share/${cmake_folder} SYMBOLIC)
  set(${package}_DIR ${prefix}/share/${cmake_folder} CACHE PATH "Borrowed" FORCE)
endfunction()
halvorn_borrow_headers(CLI11 CLI cmake/CLI11)
halvorn_borrow_headers(nlohmann_json nlohmann cmake/nlohmann_json)
halvorn_borrow_headers(Eigen3 eigen3 eigen3/cmake)

# Debian's googletest package; a target's own Google Test, where there is one, goes first.
if(HALVORN_BUILD_TESTS)
  find_package(GTest QUIET)
  find_path(HALVORN_GTEST_SOURCE googletest/CMakeLists.txt PATHS /usr/src/googletest
    NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
  if(NOT GTest_FOUND AND HALVORN_GTEST_SOURCE)
    set(BUILD_GMOCK OFF)
    set(INSTALL_GTEST OFF)
    add_subdirectory(${HALVORN_GTEST_SOURCE} ${PROJECT_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
  endif()
endif()

# The runtime is the shared one: std::bad_alloc and containers cross the library's boundary. With a
# runtime linked into each module, an operator new that the host replaces would serve one side only,
# and each side would count the exceptions in flight for itself.
if(MINGW)
  foreach(name IN ITEMS libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
      OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(COPY ${dll} DESTINATION ${PROJECT_BINARY_DIR}/bin)
  endforeach()
endif()

# The first start of Wine fills its folder, which takes longer than a test may.
if(HALVORN_WINE AND NOT EXISTS ${PROJECT_BINARY_DIR}/wine/system.reg)
  execute_process(COMMAND ${CMAKE_CROSSCOMPILING_EMULATOR} wineboot --init
    OUTPUT_QUIET ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
endif()
