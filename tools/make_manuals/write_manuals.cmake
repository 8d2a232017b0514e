# Writes the manual of each source in PAGES to FOLDER/manN. SCDOC is the program scdoc.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(GLOB pages ${PAGES}/*.scd)
foreach(page IN LISTS pages)
  cmake_path(GET page STEM LAST_ONLY name)
  string(REGEX MATCH "[0-9]$" section ${name})
  file(MAKE_DIRECTORY ${FOLDER}/man${section})
  execute_process(COMMAND ${SCDOC} INPUT_FILE ${page}
                  OUTPUT_VARIABLE manual COMMAND_ERROR_IS_FATAL ANY)
  # scdoc also begins a paragraph where none follows, of which readers of manuals warn. The space
  # below an entry stands behind it.
  string(REGEX REPLACE "\n\\.PP?\n\\.RE\n" "\n.RE\n.PP\n" manual "${manual}")
  foreach(round RANGE 1 3)
    string(REGEX REPLACE "(\n\\.S[HS] [^\n]*)\n\\.PP?\n" "\\1\n" manual "${manual}")
    string(REGEX REPLACE "\n\\.PP?\n(\\.[A-Z])" "\n\\1" manual "${manual}")
  endforeach()
  string(REGEX REPLACE "\n\\.PP?\n$" "\n" manual "${manual}")
  file(WRITE ${FOLDER}/man${section}/${name} "${manual}")
endforeach()
file(TOUCH ${FOLDER}/written)
