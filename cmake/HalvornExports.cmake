# Hidden visibility is not enough: instantiations of std:: templates would still be exported. The
# version script leaves the members of CSectionTools and nothing else.
if(NOT WIN32 AND NOT APPLE)
  set(HALVORN_VERSION_SCRIPT ${CMAKE_CURRENT_LIST_DIR}/exports.map)
  # clang resolves a sanitizer's symbols in the executable only, so they may stay open there.
  target_link_options(HalvornSectionTools PRIVATE
    "LINKER:--version-script=${HALVORN_VERSION_SCRIPT}"
    $<$<NOT:$<BOOL:${HALVORN_SANITIZE}>>:LINKER:--no-undefined>)
  set_property(TARGET HalvornSectionTools APPEND PROPERTY LINK_DEPENDS ${HALVORN_VERSION_SCRIPT})
endif()
