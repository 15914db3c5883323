# The forms in which the command writes its answers, and what they use. The page writes its answers with them, too.
set(PLDDB_FORMS
  check_forms.cpp
  colour.cpp
  console_${PLDDB_PLATFORM}.cpp
  device_lookup.cpp
  device_text.cpp
  find_forms.cpp
  fits_forms.cpp
  identify/json.cpp
  identify/openocd.cpp
  identify/output.cpp
  identify/text.cpp
  identify/tsv.cpp
  ir_lengths.cpp
  json_text.cpp
  show_forms.cpp
  text_table.cpp
)
list(TRANSFORM PLDDB_FORMS PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
