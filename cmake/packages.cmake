# Debian packages, one for each component of install.cmake: scripts/packages builds them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The plddb authors <authors@plddb.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_COMPONENTS_ALL library development data tool documentation)
if(TARGET plddb_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/debian/complete_stage.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})
set(PLDDB_DEBIAN_VERSION ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(PLDDB_DEBIAN_LIBRARY libplddb${PROJECT_VERSION_MAJOR})
set(PLDDB_ABOUT "plddb answers what a programmable logic device is, from what is known
about it (its IDCODE, name, ordering number, fuse count), and what it
takes to talk to it: instruction codes and register lengths, packages,
times, fuse-map layout.
")

# plddb_describe(COMPONENT PART TEXT): the description of one package.
function(plddb_describe COMPONENT PART TEXT)
  set(CPACK_DEBIAN_${COMPONENT}_DESCRIPTION
    "device database for programming CPLDs and FPGAs - ${PART}\n${PLDDB_ABOUT}\n${TEXT}" PARENT_SCOPE)
endfunction()

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${PLDDB_DEBIAN_LIBRARY})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/cmake/debian/triggers)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS plddb-data)
plddb_describe(LIBRARY library "This package holds the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libplddb-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${PLDDB_DEBIAN_LIBRARY} (= ${PLDDB_DEBIAN_VERSION}), libpugixml-dev, zlib1g-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS plddb-data)
plddb_describe(DEVELOPMENT headers "This package holds what programs that use the library are built with, the
loader of device descriptions among it.")

set(CPACK_DEBIAN_DATA_PACKAGE_NAME plddb-data)
set(CPACK_DEBIAN_DATA_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_DATA_PACKAGE_ARCHITECTURE all)
plddb_describe(DATA data "This package holds descriptions of real devices, and their schema.")

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME plddb)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_TOOL_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS
  "${PLDDB_DEBIAN_LIBRARY} (= ${PLDDB_DEBIAN_VERSION}), plddb-data (= ${PLDDB_DEBIAN_VERSION})")
plddb_describe(TOOL command "This package holds the command.")

set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-plddb)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/debian/python/postinst ${PROJECT_SOURCE_DIR}/cmake/debian/python/prerm)
if(TARGET plddb_python)  # the module is built for one version of Python
  math(EXPR PLDDB_PYTHON_NEXT "${Python_VERSION_MINOR} + 1")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
    "python3 (>= 3.${Python_VERSION_MINOR}~), python3 (<< 3.${PLDDB_PYTHON_NEXT}), \
${PLDDB_DEBIAN_LIBRARY} (= ${PLDDB_DEBIAN_VERSION}), plddb-data (= ${PLDDB_DEBIAN_VERSION})")
endif()
plddb_describe(PYTHON "Python module" "This package holds the module for Python 3.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME plddb-doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
plddb_describe(DOCUMENTATION documentation "This package holds the pages, the examples and the reference.")

# complete_stage.cmake reads these.
set(CPACK_PLDDB_COPYRIGHT ${PROJECT_SOURCE_DIR}/cmake/debian/copyright)
set(CPACK_PLDDB_CHANGELOG ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
foreach(COMPONENT IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER ${COMPONENT} UPPER)
  set(CPACK_PLDDB_PACKAGE_${COMPONENT} ${CPACK_DEBIAN_${UPPER}_PACKAGE_NAME})
endforeach()
include(CPack)
