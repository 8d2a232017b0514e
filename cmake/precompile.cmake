# halvane_precompile(ALL|TESTS target header...) compiles headers that most of the target's C++
# sources include once for all of them, if HALVANE_PRECOMPILE is ALL or the word given here. Sources
# still include what they use: presets without this, and script/checks/includes, hold them to it.
#
# The shipped library and tools are compiled without: GCC 12 then warns of false overflows in the
# standard library, which it otherwise keeps to itself.
function(halvane_precompile kind target)
  if(NOT HALVANE_PRECOMPILE STREQUAL "ALL" AND NOT HALVANE_PRECOMPILE STREQUAL kind)
    return()
  endif()
  set(headers)
  foreach(header IN LISTS ARGN)
    list(APPEND headers "$<$<COMPILE_LANGUAGE:CXX>:<${header}$<ANGLE-R>>")
  endforeach()
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()

# halvane_objects_of(library variable) sets the variable to the objects of an object library, for
# whoever links them through another library. Precompiled headers are among a library's objects for
# CMake, but not for the linker.
function(halvane_objects_of library variable)
  set(${variable} "$<FILTER:$<TARGET_OBJECTS:${library}>,EXCLUDE,\\.gch$|\\.pch$>" PARENT_SCOPE)
endfunction()
