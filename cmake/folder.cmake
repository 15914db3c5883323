# plddb_refuse_folder(CHARACTERS WHAT): ends the configuration in a folder whose path has something of the regular expression
# CHARACTERS, which WHAT cannot handle; it would fail later, with a message that does not name the reason.
function(plddb_refuse_folder CHARACTERS WHAT)
  foreach(FOLDER "${CMAKE_SOURCE_DIR}" "${CMAKE_BINARY_DIR}")
    string(REGEX REPLACE "^[A-Za-z]:/" "" PATH "${FOLDER}")  # a drive of Windows
    if("${PATH}" MATCHES "${CHARACTERS}")
      message(FATAL_ERROR "${WHAT} cannot work in a folder with ${CMAKE_MATCH_0} in its path:\n  ${FOLDER}\n"
        "Take another folder for the sources and for the build.")
    endif()
  endforeach()
endfunction()
