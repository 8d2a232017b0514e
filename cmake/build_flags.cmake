# Warnings and instrumentation, on private INTERFACE targets: users of an installed halvane inherit
# none of them.

add_library(halvane_warnings INTERFACE)
target_compile_options(halvane_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(HALVANE_WARNINGS_AS_ERRORS)
  target_compile_options(halvane_warnings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 warns of false overlaps if a literal is assigned or added to a string (its bug 105651).
  target_compile_options(halvane_warnings INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 14
   AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 15)
  # GCC 14 assumes that a returned reference refers to the call's temporary arguments, even if it
  # refers to something that outlives them.
  target_compile_options(halvane_warnings
                         INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-dangling-reference>)
endif()

# The standard library checks its arguments in every build that is not shipped: the debug, asan,
# tsan and fuzz presets have the type Debug.
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

# What is shipped is hardened: the library, the tool and the daemons are compiled with the first
# target and linked with the second one. The first has no options for the linker, since those of a
# static library and of objects reach every program that links them, such as a user's, whose own
# sources need not be position-independent. Programs bind all functions before they run, so that the
# tables of addresses are read-only from then on (full RELRO); the library leaves that to the program
# that loads it.
include(CheckCXXCompilerFlag)
add_library(halvane_hardening INTERFACE)
add_library(halvane_hardened_link INTERFACE)
if(NOT HALVANE_SANITIZE AND NOT HALVANE_COVERAGE)
  set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  foreach(flag IN ITEMS -fstack-protector-strong -fcf-protection -mbranch-protection=standard)
    string(MAKE_C_IDENTIFIER has${flag} has_flag)
    check_cxx_compiler_flag(${flag} ${has_flag})
    if(${has_flag})
      target_compile_options(halvane_hardening INTERFACE $<${optimised}:${flag}>)
    endif()
  endforeach()
  set(is_program $<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>)
  set(is_plain $<NOT:$<BOOL:$<TARGET_PROPERTY:POSITION_INDEPENDENT_CODE>>>)
  target_compile_options(
    halvane_hardening INTERFACE "$<${optimised}:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>"
                                $<$<AND:${optimised},${is_plain}>:-fPIE>)
  target_link_options(
    halvane_hardened_link INTERFACE $<${optimised}:-Wl,-z,relro,-z,noexecstack>
                                "$<$<AND:${optimised},${is_program}>:-pie;-Wl,-z,now>")
endif()

# The whole tree is instrumented alike, so these are directory-wide.
if(HALVANE_SANITIZE)
  add_compile_options(-fsanitize=${HALVANE_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${HALVANE_SANITIZE})
  if(HALVANE_SANITIZE MATCHES "undefined" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With UBSan's checks, GCC 12 warns that optional values are uninitialised, and that growing
    # strings overflow. Both are false.
    add_compile_options(-Wno-maybe-uninitialized -Wno-stringop-overflow)
  endif()
endif()
if(HALVANE_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
