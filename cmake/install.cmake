# What `cmake --install` lays out. The components are those of the Debian packages (packages.cmake); without packages they make
# no difference. The installation may be moved as a whole: nothing in it names its folder, except the tool's second choice of
# a data folder.
include(CMakePackageConfigHelpers)

set(PLDDB_CONFIG_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/plddb)

install(TARGETS plddb EXPORT plddb
  RUNTIME COMPONENT library
  LIBRARY COMPONENT library NAMELINK_COMPONENT development
  ARCHIVE COMPONENT development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/plddb COMPONENT development FILES_MATCHING PATTERN "*.h")
install(EXPORT plddb NAMESPACE plddb:: FILE plddb-targets.cmake DESTINATION ${PLDDB_CONFIG_DIR} COMPONENT development)

set(PLDDB_DATA_DIR ${CMAKE_INSTALL_FULL_DATADIR}/plddb)
set(PLDDB_PC_DIR ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH PLDDB_PREFIX_FROM_PC ${PLDDB_PC_DIR} ${CMAKE_INSTALL_PREFIX})
file(RELATIVE_PATH PLDDB_INCLUDE_FROM_PC ${PLDDB_PC_DIR} ${CMAKE_INSTALL_FULL_INCLUDEDIR})
file(RELATIVE_PATH PLDDB_DATA_FROM_PC ${PLDDB_PC_DIR} ${PLDDB_DATA_DIR})
file(RELATIVE_PATH PLDDB_DATA_FROM_CONFIG ${CMAKE_INSTALL_FULL_LIBDIR}/cmake/plddb ${PLDDB_DATA_DIR})
get_target_property(PLDDB_TYPE plddb TYPE)
if(PLDDB_TYPE STREQUAL "STATIC_LIBRARY")
  set(PLDDB_PC_DEFINITIONS " -DPLDDB_STATIC")
endif()

# plddb_install_pc(FILE TEMPLATE): fills the template in and installs it as FILE.
function(plddb_install_pc FILE TEMPLATE)
  configure_file(${TEMPLATE} ${PROJECT_BINARY_DIR}/${FILE} @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${FILE} DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endfunction()
plddb_install_pc(plddb.pc cmake/plddb.pc.in)

# plddb_install_library(NAME): what plddb_add_library declared. Sets PLDDB_LOAD to the line of the CMake package that loads it.
function(plddb_install_library NAME)
  get_target_property(DESCRIPTION plddb_${NAME} PLDDB_DESCRIPTION)
  get_target_property(NEEDS plddb_${NAME} PLDDB_NEEDS)
  get_target_property(PACKAGES plddb_${NAME} PLDDB_PACKAGES)
  install(TARGETS plddb_${NAME} EXPORT plddb-${NAME}
    ARCHIVE COMPONENT development
    PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/plddb COMPONENT development)
  install(EXPORT plddb-${NAME} NAMESPACE plddb:: FILE plddb-${NAME}-targets.cmake
    DESTINATION ${PLDDB_CONFIG_DIR} COMPONENT development)
  list(TRANSFORM NEEDS PREPEND "plddb-" OUTPUT_VARIABLE REQUIRES)
  list(TRANSFORM NEEDS PREPEND "plddb_")
  list(TRANSFORM REQUIRES APPEND " = ${PROJECT_VERSION}")
  string(TOLOWER "${PACKAGES}" PC_PACKAGES)
  string(JOIN ", " REQUIRES "plddb = ${PROJECT_VERSION}" ${REQUIRES} ${PC_PACKAGES})
  plddb_install_pc(plddb-${NAME}.pc cmake/plddb-library.pc.in)
  set(PLDDB_LOAD "plddb_load(${NAME} \"${NEEDS}\" \"${PACKAGES}\")\n" PARENT_SCOPE)
endfunction()

get_property(PLDDB_LIBRARIES GLOBAL PROPERTY PLDDB_LIBRARIES)
foreach(NAME IN LISTS PLDDB_LIBRARIES)
  plddb_install_library(${NAME})
  string(APPEND PLDDB_LOADS "${PLDDB_LOAD}")
endforeach()
list(JOIN PLDDB_LIBRARIES ", " PLDDB_COMPONENTS_TEXT)

configure_file(cmake/plddb-config.cmake.in plddb-config.cmake @ONLY)
write_basic_package_version_file(plddb-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/plddb-config.cmake ${PROJECT_BINARY_DIR}/plddb-config-version.cmake
  DESTINATION ${PLDDB_CONFIG_DIR} COMPONENT development)

if(TARGET plddb_descriptions)
  install(DIRECTORY data/ DESTINATION ${CMAKE_INSTALL_DATADIR}/plddb COMPONENT data
    FILES_MATCHING PATTERN "*.xml" PATTERN tables EXCLUDE)
  install(FILES descriptions/plddb.xsd DESTINATION ${CMAKE_INSTALL_DATADIR}/plddb COMPONENT data)
endif()

if(TARGET plddb_tool)
  file(RELATIVE_PATH PLDDB_LIB_FROM_BIN ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(plddb_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${PLDDB_LIB_FROM_BIN}")
  install(TARGETS plddb_tool RUNTIME COMPONENT tool)
endif()
if(TARGET plddb_tool AND NOT WIN32)
  install(DIRECTORY tool/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool OPTIONAL FILES_MATCHING PATTERN "*.1")
  install(FILES tool/completions/plddb.bash RENAME plddb OPTIONAL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT tool)
  install(FILES tool/completions/_plddb OPTIONAL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT tool)
  install(FILES tool/completions/plddb.fish OPTIONAL
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
endif()

# The reference exists after scripts/docs has written it.
set(PLDDB_REFERENCE ${PROJECT_SOURCE_DIR}/build/docs/html)
install(FILES README.md CHANGELOG.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
  FILES_MATCHING PATTERN "*.md" PATTERN "*.svg" PATTERN "*.cpp" PATTERN "*.xml")
install(DIRECTORY ${PLDDB_REFERENCE} DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation OPTIONAL)
