# plddb_add_library(NAME DESCRIPTION
#   SOURCES file...      relative to the folder, like all files here
#   HEADERS file...      what clients include; the other headers are internal
#   [NEEDS name...]      the other libraries that this one uses, declared earlier
#   [PACKAGES name...])  the packages that it links, found earlier; CMake's name, that of the target NAME::NAME, in lower case pkg-config's
#
# Declares a library other than the core: plddb::NAME, static, the target plddb_NAME. install.cmake installs it with its headers,
# makes it a component of the CMake package, and writes plddb-NAME.pc.
function(plddb_add_library NAME DESCRIPTION)
  cmake_parse_arguments(PARSE_ARGV 2 ARG "" "" "SOURCES;HEADERS;NEEDS;PACKAGES")
  set(TARGET plddb_${NAME})
  add_library(${TARGET} STATIC ${ARG_SOURCES})
  add_library(plddb::${NAME} ALIAS ${TARGET})
  target_include_directories(${TARGET}
    PUBLIC
      $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}>
      $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/plddb>
    PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(${TARGET} PUBLIC plddb::plddb)
  foreach(NEED IN LISTS ARG_NEEDS)
    target_link_libraries(${TARGET} PUBLIC plddb::${NEED})
  endforeach()
  foreach(PACKAGE IN LISTS ARG_PACKAGES)
    target_link_libraries(${TARGET} PRIVATE ${PACKAGE}::${PACKAGE})
  endforeach()
  list(TRANSFORM ARG_HEADERS PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  set_target_properties(${TARGET} PROPERTIES
    POSITION_INDEPENDENT_CODE ${PLDDB_PIC} EXPORT_NAME ${NAME} PUBLIC_HEADER "${ARG_HEADERS}"
    PLDDB_DESCRIPTION "${DESCRIPTION}" PLDDB_NEEDS "${ARG_NEEDS}" PLDDB_PACKAGES "${ARG_PACKAGES}")
  set_property(GLOBAL APPEND PROPERTY PLDDB_LIBRARIES ${NAME})
endfunction()
