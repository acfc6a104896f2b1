# What is installed of the library: itself, its one header, its licence, and the files by which
# find_package and pkg-config find it; the tool's program and the engine install themselves. No installed file holds an
# absolute path, so a prefix can be moved.
include(CMakePackageConfigHelpers)

set(HALVORN_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/HalvornSectionTools)

install(TARGETS HalvornSectionTools EXPORT HalvornSectionToolsTargets
  RUNTIME COMPONENT Runtime
  LIBRARY COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE COMPONENT Development
  FILE_SET HEADERS COMPONENT Development)
install(EXPORT HalvornSectionToolsTargets
  NAMESPACE HalvornSectionTools::
  DESTINATION ${HALVORN_PACKAGE_DIR}
  COMPONENT Development)

configure_package_config_file(
  ${CMAKE_CURRENT_LIST_DIR}/HalvornSectionToolsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/HalvornSectionToolsConfig.cmake
  INSTALL_DESTINATION ${HALVORN_PACKAGE_DIR}
  NO_SET_AND_CHECK_MACRO)
# Before 1.0 a minor version may change the interface.
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/HalvornSectionToolsConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/HalvornSectionToolsConfig.cmake
  ${PROJECT_BINARY_DIR}/HalvornSectionToolsConfigVersion.cmake
  DESTINATION ${HALVORN_PACKAGE_DIR}
  COMPONENT Development)

file(RELATIVE_PATH HALVORN_PREFIX_FROM_PC
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
# Packagers may give absolute directories.
foreach(directory IN ITEMS LIBDIR INCLUDEDIR)
  file(RELATIVE_PATH HALVORN_PC_${directory}
    ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_FULL_${directory}})
endforeach()
set(HALVORN_PC_CFLAGS "")
if(HALVORN_LIBRARY_TYPE STREQUAL "STATIC")
  set(HALVORN_PC_CFLAGS " -DHALVORN_SECTION_TOOLS_STATIC")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/HalvornSectionTools.pc.in
  ${PROJECT_BINARY_DIR}/HalvornSectionTools.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/HalvornSectionTools.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Development)

# Debian's packages have their own folders for documents and say the licence in their own way.
if(NOT HALVORN_PACKAGES)
  set(HALVORN_DOCDIR_Development ${CMAKE_INSTALL_DOCDIR})
  set(HALVORN_DOCDIR_Engine ${CMAKE_INSTALL_DOCDIR})
  set(HALVORN_DOCDIR_Tool ${CMAKE_INSTALL_DOCDIR})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT Runtime)
endif()

# The documents that the header and the tool refer to.
function(halvorn_install_documents component)
  foreach(name IN LISTS ARGN)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/${name}
      DESTINATION ${HALVORN_DOCDIR_${component}} COMPONENT ${component} OPTIONAL)
  endforeach()
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/images
    DESTINATION ${HALVORN_DOCDIR_${component}} COMPONENT ${component})
endfunction()
halvorn_install_documents(Development conventions.md theory.md robustness.md performance.md
  platforms.md host-developers.md)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/consumer
  DESTINATION ${HALVORN_DOCDIR_Development}/examples COMPONENT Development)
if(HALVORN_WITH_TOOL)
  halvorn_install_documents(Tool conventions.md file-format.md catalogues.md section.schema.json guide.md
    published-values.md)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples
    DESTINATION ${HALVORN_DOCDIR_Tool} COMPONENT Tool
    PATTERN consumer EXCLUDE PATTERN engine EXCLUDE PATTERN *.py EXCLUDE)
  install(FILES ${PROJECT_SOURCE_DIR}/tool/completion/halvorn-section.bash
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/bash-completion/completions RENAME halvorn-section
    COMPONENT Tool)
  set(HALVORN_MANUAL_PAGE ${PROJECT_SOURCE_DIR}/docs/halvorn-section.1)
  if(HALVORN_PACKAGES AND EXISTS ${HALVORN_MANUAL_PAGE})
    halvorn_install_compressed(${HALVORN_MANUAL_PAGE} ${CMAKE_INSTALL_MANDIR}/man1
      halvorn-section.1 Tool)
  elseif(EXISTS ${HALVORN_MANUAL_PAGE})
    install(FILES ${HALVORN_MANUAL_PAGE}
      DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tool)
  endif()
endif()
