# Makes whatever links `target` take replaced_system.cpp's functions for those of the system: the
# linker binds calls of each to that file.
function(halvane_replace_system target)
  set(functions
      _ZN7halvane9upTimeNowEv
      _ZN7halvane14upTimeLastStepEv
      _ZN7halvane11upTimeSleepERK8timespec
      _ZN7halvane8wallTimeEv
      _ZN7halvane10fillRandomESt4spanIjLm18446744073709551615EE
      _ZN7halvane16writeToSystemLogEiSt17basic_string_viewIcSt11char_traitsIcEE
      _ZN7halvane20writeToConsoleDeviceESt17basic_string_viewIcSt11char_traitsIcEEPKc)
  list(TRANSFORM functions PREPEND "LINKER:--wrap=")
  target_link_options(${target} INTERFACE ${functions})
  target_sources(${target} INTERFACE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/replaced_system.cpp)
endfunction()

# Makes `target` take replaced_heap.cpp's malloc, realloc and free for those of the system.
function(halvane_replace_heap target)
  target_link_options(${target} PRIVATE LINKER:--wrap=malloc LINKER:--wrap=realloc
                      LINKER:--wrap=free)
  target_sources(${target} PRIVATE ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/replaced_heap.cpp)
endfunction()
