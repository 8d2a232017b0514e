# halvane_settings_folder(variable sysconfdir prefix) sets the variable to the folder that holds
# halvane/halvaned.conf in an installation with this prefix: below it, but /etc for the prefix /usr.
function(halvane_settings_folder variable sysconfdir prefix)
  if(prefix STREQUAL "/usr" AND sysconfdir STREQUAL "etc")
    set(prefix /)
  endif()
  cmake_path(ABSOLUTE_PATH sysconfdir BASE_DIRECTORY "${prefix}" OUTPUT_VARIABLE folder)
  set(${variable} "${folder}" PARENT_SCOPE)
endfunction()
