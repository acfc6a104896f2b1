# What is installed of the library: itself, its one header, its licence, and the files by which
# find_package and pkg-config find it; the tool installs itself. No installed file holds an absolute path, so a prefix can be moved.
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
configure_file(${CMAKE_CURRENT_LIST_DIR}/HalvornSectionTools.pc.in
  ${PROJECT_BINARY_DIR}/HalvornSectionTools.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/HalvornSectionTools.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Development)

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
  DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT Runtime)
