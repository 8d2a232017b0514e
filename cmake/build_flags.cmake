# Warnings and instrumentation, on private INTERFACE targets: what builds on an
# installed halvane inherits none of them.

add_library(halvane_warnings INTERFACE)
target_compile_options(halvane_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(HALVANE_WARNINGS_AS_ERRORS)
  target_compile_options(halvane_warnings INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlaps that are none where a literal is assigned or added to a string (its bug
  # 105651).
  target_compile_options(halvane_warnings INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-restrict>)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 14
   AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 15)
  # GCC 14 takes a reference that a call returns for one into the call's temporary arguments, also
  # where it refers to what outlives them.
  target_compile_options(halvane_warnings
                         INTERFACE $<$<COMPILE_LANGUAGE:CXX>:-Wno-dangling-reference>)
endif()

# The standard library checks what it is called with, in every build that is not shipped: the
# debug, asan, tsan and fuzz presets are of type Debug.
add_compile_definitions($<$<CONFIG:Debug>:_GLIBCXX_ASSERTIONS>)

# The whole tree is instrumented alike, so these are directory-wide.
if(HALVANE_SANITIZE)
  add_compile_options(-fsanitize=${HALVANE_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${HALVANE_SANITIZE})
  if(HALVANE_SANITIZE MATCHES "undefined" AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes optional values for uninitialised, and growing strings for overflowing, once
    # UBSan's checks are in.
    add_compile_options(-Wno-maybe-uninitialized -Wno-stringop-overflow)
  endif()
endif()
if(HALVANE_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
if(HALVANE_LIBFUZZER)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
