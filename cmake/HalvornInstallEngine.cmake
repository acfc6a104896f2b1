# What is installed of the engine: a static library, its one header, and the files by which
# find_package and pkg-config find it beside the library. Included where the engine is built.
install(TARGETS halvorn_engine EXPORT HalvornSectionToolsEngineTargets
  ARCHIVE COMPONENT Engine
  FILE_SET HEADERS COMPONENT Engine)
install(EXPORT HalvornSectionToolsEngineTargets
  NAMESPACE HalvornSectionTools::
  DESTINATION ${HALVORN_PACKAGE_DIR}
  COMPONENT Engine)

# Everyone links a static library, and so what it stands on too.
set(HALVORN_PC_CAIRO "")
if(HALVORN_WITH_FIGURES)
  set(HALVORN_PC_CAIRO ", cairo, cairo-pdf, cairo-png")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/HalvornSectionToolsEngine.pc.in
  ${PROJECT_BINARY_DIR}/HalvornSectionToolsEngine.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/HalvornSectionToolsEngine.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT Engine)

halvorn_install_documents(Engine conventions.md file-format.md section.schema.json)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/engine
  DESTINATION ${HALVORN_DOCDIR_Engine}/examples COMPONENT Engine)
