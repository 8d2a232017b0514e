# halvane_precompile(target header...) compiles headers that most of the target's C++ sources
# include once for all of them, if HALVANE_PRECOMPILE is on. Sources still include what they use:
# presets without this option, and script/checks/includes, hold them to it.
function(halvane_precompile target)
  if(NOT HALVANE_PRECOMPILE)
    return()
  endif()
  set(headers)
  foreach(header IN LISTS ARGN)
    list(APPEND headers "$<$<COMPILE_LANGUAGE:CXX>:<${header}$<ANGLE-R>>")
  endforeach()
  target_precompile_headers(${target} PRIVATE ${headers})
endfunction()
