# What the library exports.
if(HALVORN_LIBRARY_TYPE STREQUAL "STATIC")
  # Nothing is exported or imported then, neither here nor by a program that links the library.
  foreach(target IN ITEMS halvorn_objects HalvornSectionTools)
    target_compile_definitions(${target} PUBLIC HALVORN_SECTION_TOOLS_STATIC)
  endforeach()
endif()

# Routines that tests and benchmarks call and no exported member does: the linker leaves them out, of
# the shared library here, of a program that links the static one if its own link asks so. MinGW's
# linker keeps nearly all of them: their unwind tables refer to them.
include(CheckLinkerFlag)
if(NOT MSVC)
  check_linker_flag(CXX LINKER:--gc-sections HALVORN_LINKER_COLLECTS_SECTIONS)
endif()
if(HALVORN_LINKER_COLLECTS_SECTIONS)
  foreach(target IN ITEMS halvorn_kernel halvorn_objects)
    target_compile_options(${target} PRIVATE -ffunction-sections -fdata-sections)
  endforeach()
endif()
if(HALVORN_LIBRARY_TYPE STREQUAL "STATIC")
  return()
endif()
if(HALVORN_LINKER_COLLECTS_SECTIONS)
  target_link_options(HalvornSectionTools PRIVATE LINKER:--gc-sections)
endif()

# Hidden visibility is not enough: instantiations of std:: templates would still be exported. The
# version script leaves the members of CSectionTools and nothing else.
if(NOT WIN32 AND NOT APPLE)
  set(HALVORN_VERSION_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/exports.map)
  target_link_options(HalvornSectionTools PRIVATE
    "LINKER:--version-script=${HALVORN_VERSION_SCRIPT}")
  # clang keeps a sanitizer's symbols in the executable alone, so a sanitized library leaves them open.
  if(NOT HALVORN_SANITIZE)
    target_link_options(HalvornSectionTools PRIVATE "LINKER:--no-undefined")
  endif()
  set_property(TARGET HalvornSectionTools APPEND PROPERTY LINK_DEPENDS ${HALVORN_VERSION_SCRIPT})
endif()
if(WIN32)
  # One file name with every compiler: MinGW would put "lib" before it.
  set_target_properties(HalvornSectionTools PROPERTIES PREFIX "")
endif()
if(MINGW)
  # What dllexport marks and nothing else, also where nothing is marked.
  target_link_options(HalvornSectionTools PRIVATE LINKER:--exclude-all-symbols)
endif()
