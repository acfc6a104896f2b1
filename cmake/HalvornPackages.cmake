# Debian packages of the library (runtime and development), of the engine for C++ hosts, of the tool and
# of the Python module, one per component: scripts/package. Included before the install rules, which then follow Debian's layout.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr" OR NOT HALVORN_WITH_TOOL OR
   NOT HALVORN_PYTHON OR NOT HALVORN_INSTALL OR NOT HALVORN_LIBRARY_TYPE STREQUAL "SHARED")
  message(FATAL_ERROR "Packages want -DCMAKE_INSTALL_PREFIX=/usr, the shared library, the tool and "
    "-DHALVORN_PYTHON: scripts/package")
endif()
# The packages' files are found where Debian has them, and hold nothing of the folder they were
# built in.
set(CMAKE_SKIP_RPATH ON)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

string(TOLOWER libHalvornSectionTools HALVORN_PACKAGE_STEM)
set(HALVORN_PACKAGE_Runtime ${HALVORN_PACKAGE_STEM}${HALVORN_SOVERSION})
set(HALVORN_PACKAGE_Development ${HALVORN_PACKAGE_STEM}-dev)
set(HALVORN_PACKAGE_Engine ${HALVORN_PACKAGE_STEM}-engine-dev)
set(HALVORN_PACKAGE_Tool halvorn-section)
set(HALVORN_PACKAGE_Python python3-halvorn-section-tools)
set(HALVORN_PACKAGE_VERSION ${PROJECT_VERSION}-1)
set(HALVORN_PACKAGE_MAINTAINER
  "HalvornSectionTools maintainers <maintainers@halvornsectiontools.example.org>")

# Compresses a file as Debian wants it, without name and time, and installs it.
function(halvorn_install_compressed file directory name component)
  set(compressed ${PROJECT_BINARY_DIR}/debian/${component}/${name}.gz)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/debian/${component})
  execute_process(COMMAND gzip -9nc ${file} OUTPUT_FILE ${compressed} COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
  install(FILES ${compressed} DESTINATION ${directory} COMPONENT ${component})
endfunction()

string(TIMESTAMP HALVORN_PACKAGE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(READ ${PROJECT_SOURCE_DIR}/LICENSE HALVORN_LICENCE_TEXT)
string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" copyright_line "${HALVORN_LICENCE_TEXT}")
set(HALVORN_COPYRIGHT ${CMAKE_MATCH_1})
string(REGEX REPLACE "^.*\n(Permission is hereby)" "\\1" HALVORN_LICENCE_TEXT
  "${HALVORN_LICENCE_TEXT}")
string(STRIP "${HALVORN_LICENCE_TEXT}" HALVORN_LICENCE_TEXT)
string(REPLACE "\n\n" "\n.\n" HALVORN_LICENCE_TEXT "${HALVORN_LICENCE_TEXT}")
string(REPLACE "\n" "\n " HALVORN_LICENCE_TEXT "${HALVORN_LICENCE_TEXT}")

# The engine holds Eigen's code, compiled, and so do the tool and the Python module.
string(CONCAT compiled_in "Comment: Holds compiled code of Eigen, https://eigen.tuxfamily.org, which is"
  " under the\n Mozilla Public License 2.0, in Debian in /usr/share/common-licenses/MPL-2.0. Its source is"
  "\n in Debian's package libeigen3-dev.\n")
foreach(component IN ITEMS Runtime Development Engine Tool Python)
  set(HALVORN_COMPILED_IN "")
  if(component MATCHES "^(Engine|Tool|Python)$")
    set(HALVORN_COMPILED_IN ${compiled_in})
  endif()
  set(package ${HALVORN_PACKAGE_${component}})
  set(HALVORN_DOCDIR_${component} ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package})
  set(made ${PROJECT_BINARY_DIR}/debian/${component})
  configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/changelog.in ${made}/changelog.Debian @ONLY)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/debian/copyright.in ${made}/copyright @ONLY)
  install(FILES ${made}/copyright DESTINATION ${HALVORN_DOCDIR_${component}}
    COMPONENT ${component})
  halvorn_install_compressed(${made}/changelog.Debian ${HALVORN_DOCDIR_${component}}
    changelog.Debian ${component})
  halvorn_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${HALVORN_DOCDIR_${component}}
    changelog ${component})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
endforeach()

# Whoever links the library needs the version that brought the newest member or a later one of the
# same SOVERSION. The file goes into the runtime package; and as it stands beside the built library,
# dpkg-shlibdeps takes the tool's dependency from it.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/DEBIAN/shlibs CONTENT
  "libHalvornSectionTools ${HALVORN_SOVERSION} ${HALVORN_PACKAGE_Runtime} (>= ${PROJECT_VERSION})\n")

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL Runtime Development Engine Tool Python)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_OUTPUT_FILE_PREFIX ${PROJECT_BINARY_DIR})

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${HALVORN_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  "${PROJECT_BINARY_DIR}/DEBIAN/shlibs;${CMAKE_CURRENT_LIST_DIR}/debian/triggers")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "properties of structural cross-sections, shared library
Area, centre of gravity, inertias, torsion and shear terms, elastic and plastic
moduli of cross-sections made of closed polygons, of profiles from a catalogue
or of thin walls along a polyline.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${HALVORN_PACKAGE_Runtime} (= ${HALVORN_PACKAGE_VERSION})")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "properties of structural cross-sections, development files
The header of the class CSectionTools, the files by which CMake and pkg-config
find the library, an example and the documents for developers of host programs.")

# Apart from the header of the class, whose hosts do without Cairo.
set(CPACK_DEBIAN_ENGINE_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_ENGINE_PACKAGE_DEPENDS
  "${HALVORN_PACKAGE_Development} (= ${HALVORN_PACKAGE_VERSION})")
if(HALVORN_WITH_FIGURES)
  string(APPEND CPACK_DEBIAN_ENGINE_PACKAGE_DEPENDS ", libcairo2-dev, pkg-config")
endif()
set(CPACK_DEBIAN_ENGINE_DESCRIPTION "properties of structural cross-sections, engine for C++ programs
A static library with one header that reads profiles by name, drawings and
section files, computes everything that is known about a section, and writes
tables, CSV, JSON and figures; with an example.")

set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_DESCRIPTION "properties of structural cross-sections on the command line
Reads a cross-section from a file and prints its area, centre of gravity,
inertias, torsion and shear terms, elastic and plastic moduli.")

# The module is for one minor version of Python, Debian's.
execute_process(COMMAND ${HALVORN_PYTHON} -c
  "import sys; v = sys.version_info; print(f'python3 (>= {v[0]}.{v[1]}~), python3 (<< {v[0]}.{v[1] + 1})')"
  OUTPUT_VARIABLE python_depends OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${python_depends}, python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_SUGGESTS "python3-matplotlib, python3-shapely")
set(CPACK_DEBIAN_PYTHON_DESCRIPTION "properties of structural cross-sections, Python module
Area, centre of gravity, inertias, torsion and shear terms, elastic and plastic
moduli of cross-sections given as points in sequences or NumPy arrays, one by one
or many at once over threads, with figures by Matplotlib.")
include(CPack)
