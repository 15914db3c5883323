# Compares what the shared library exports with exported_operations.txt: fails when an operation is missing from either.
#
#   cmake -DNM=... -DLIBRARY=libplddb.so -DLIST=... -P check-exported.cmake
#   cmake -DOBJDUMP=... -DCXXFILT=... -DLIBRARY=libplddb.dll -DLIST=... -P check-exported.cmake
if(LIBRARY MATCHES "\\.dll$")
  # The table of exported names, without tables and type names of classes. Inline functions are exported with their classes.
  execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} COMMAND ${CXXFILT} -n OUTPUT_VARIABLE SYMBOLS COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "^.*Name Pointer\\] Table\n" "" SYMBOLS "${SYMBOLS}")
  string(REGEX REPLACE "\n\n.*$" "\n" SYMBOLS "${SYMBOLS}")
  string(REGEX REPLACE "\t\\[ *[0-9]+\\] " "- T " SYMBOLS "${SYMBOLS}")
  string(REGEX REPLACE "- T (vtable|typeinfo) for [^\n]+\n" "" SYMBOLS "${SYMBOLS}")
  # The platform's own functions of that name are in C.
  string(REGEX REPLACE " T (strupr|strlwr)\n" " T \\1(char*)\n" SYMBOLS "${SYMBOLS}")
else()
  execute_process(COMMAND ${NM} -DC --defined-only ${LIBRARY} OUTPUT_VARIABLE SYMBOLS COMMAND_ERROR_IS_FATAL ANY)
endif()
# Names as one writes them, without the standard library's inner ones.
string(REPLACE "[abi:cxx11]" "" SYMBOLS "${SYMBOLS}")
string(REPLACE "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >" "std::string" SYMBOLS "${SYMBOLS}")
string(REGEX REPLACE "std::vector<([A-Za-z_:]+), std::allocator<[A-Za-z_:]+ ?> ?>" "std::vector<\\1>" SYMBOLS "${SYMBOLS}")
string(REGEX MATCHALL "[^\n]+ T [^\n]+" SYMBOLS "${SYMBOLS}")
list(TRANSFORM SYMBOLS REPLACE "^.* T " "")
list(REMOVE_DUPLICATES SYMBOLS)  # constructors and destructors come in several forms

file(STRINGS ${LIST} LISTED REGEX "^(allocates|steady|private) ")
list(TRANSFORM LISTED REPLACE "^[a-z]+ +" "")

set(UNLISTED ${SYMBOLS})
list(REMOVE_ITEM UNLISTED ${LISTED})
set(GONE ${LISTED})
list(REMOVE_ITEM GONE ${SYMBOLS})
foreach(SYMBOL IN LISTS UNLISTED)
  message("exported, but not listed: ${SYMBOL}")
endforeach()
foreach(SYMBOL IN LISTS GONE)
  message("listed, but not exported: ${SYMBOL}")
endforeach()
if(UNLISTED OR GONE)
  message(FATAL_ERROR "${LIST} does not list what ${LIBRARY} exports")
endif()
