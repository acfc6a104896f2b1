# Sets the language, floating-point rules and warnings of one of the project's own targets.
#
# -ffp-contract=off: a fused multiply-add in one of two equal sums would break the exact
# cancellation of a solid and the same hole. MSVC does not contract under /fp:precise, its default.
#
# -Wno-restrict: gcc 12 at -O3 takes the concatenation of two std::strings for overlapping memory
# (gcc bug 105651, mended in 13).
# Code that a shared library may hold; a WebAssembly module is linked whole and is quicker without.
if(EMSCRIPTEN)
  set(HALVORN_POSITION_INDEPENDENT OFF)
else()
  set(HALVORN_POSITION_INDEPENDENT ON)
endif()

function(halvorn_compile_options target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 $<$<BOOL:${HALVORN_WARNINGS_AS_ERRORS}>:/WX>)
  else()
    target_compile_options(${target} PRIVATE
      -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow
      $<$<BOOL:${HALVORN_WARNINGS_AS_ERRORS}>:-Werror>)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
  endif()
endfunction()
