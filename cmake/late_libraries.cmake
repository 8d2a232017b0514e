# halvane_late_libraries(target PkgConfig::name...) is for libraries that the target's sources load
# when they first use them (halvane/platform/os/late_library_internal.h): the target and its users
# get their headers, and are not linked with them. Packages have to name such a library themselves;
# tests/integration/late_libraries holds them to that.
function(halvane_late_libraries target)
  foreach(library IN LISTS ARGN)
    get_target_property(folders ${library} INTERFACE_INCLUDE_DIRECTORIES)
    if(folders)
      target_include_directories(${target} SYSTEM PUBLIC ${folders})
    endif()
  endforeach()
endfunction()

# halvane_archives(variable prefix library...) sets the variable to the archives of the libraries
# that pkg_check_modules(prefix ...) has found: libnettle.a of nettle. An archive that is not there
# is left out.
function(halvane_archives variable prefix)
  set(archives)
  foreach(library IN LISTS ARGN)
    find_library(${prefix}_${library}_ARCHIVE lib${library}.a HINTS ${${prefix}_LIBRARY_DIRS})
    if(${prefix}_${library}_ARCHIVE)
      list(APPEND archives ${${prefix}_${library}_ARCHIVE})
    endif()
  endforeach()
  set(${variable} ${archives} PARENT_SCOPE)
endfunction()
