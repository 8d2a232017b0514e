# Writes the schema of each command that prints JSON to FOLDER/COMMAND.schema.json. TOOL is the tool.
# EMULATOR is what runs it if it is for another processor, or empty.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${FOLDER})
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${EMULATOR} ${TOOL} schema OUTPUT_VARIABLE commands COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" commands "${commands}")
foreach(command IN LISTS commands)
  execute_process(COMMAND ${EMULATOR} ${TOOL} schema ${command}
                  OUTPUT_FILE ${FOLDER}/${command}.schema.json COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(TOUCH ${FOLDER}/written)
