# CPack runs this between staging and packing: what Debian wants in every package.

# The changelog of the packages names the version, and leaves the changes to CHANGELOG.md.
file(READ ${CPACK_PLDDB_CHANGELOG} CHANGES)
if(NOT CHANGES MATCHES "## \\[${CPACK_PACKAGE_VERSION}\\] - ([0-9-]+)")
  message(FATAL_ERROR "CHANGELOG.md has no section for ${CPACK_PACKAGE_VERSION}")
endif()
execute_process(COMMAND date --utc --rfc-email --date=${CMAKE_MATCH_1} OUTPUT_VARIABLE DATE OUTPUT_STRIP_TRAILING_WHITESPACE)
string(CONCAT DEBIAN_CHANGES
  "plddb (${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}) unstable; urgency=medium\n\n"
  "  * Version ${CPACK_PACKAGE_VERSION}; changelog.gz names its changes.\n\n"
  " -- ${CPACK_PACKAGE_CONTACT}  ${DATE}\n")

foreach(COMPONENT IN LISTS CPACK_COMPONENTS_ALL)
  set(STAGE ${CPACK_TEMPORARY_DIRECTORY}/${COMPONENT}/usr)
  set(DOC ${STAGE}/share/doc/${CPACK_PLDDB_PACKAGE_${COMPONENT}})
  configure_file(${CPACK_PLDDB_COPYRIGHT} ${DOC}/copyright COPYONLY)
  file(WRITE ${DOC}/changelog.Debian "${DEBIAN_CHANGES}")
  file(WRITE ${DOC}/changelog "${CHANGES}")
  file(GLOB_RECURSE MANUALS ${STAGE}/share/man/*)
  execute_process(COMMAND gzip --best --no-name ${DOC}/changelog.Debian ${DOC}/changelog ${MANUALS} COMMAND_ERROR_IS_FATAL ANY)
  # The copyright file replaces the licence, and changelog.gz replaces this one.
  file(REMOVE ${STAGE}/share/doc/plddb/LICENSE ${STAGE}/share/doc/plddb/CHANGELOG.md)
endforeach()
