# The API reference with the guides: cmake --build --preset release --target docs. It needs Doxygen,
# and is no part of the default build.
find_program(HALVANE_DOXYGEN doxygen)
if(HALVANE_DOXYGEN)
  add_custom_target(
    docs
    COMMAND ${PROJECT_SOURCE_DIR}/docs/doxygen/build ${PROJECT_BINARY_DIR}/docs
            ${PROJECT_SOURCE_DIR} ${PROJECT_VERSION}
    COMMENT "Writing ${PROJECT_BINARY_DIR}/docs/html/index.html"
    USES_TERMINAL)
endif()
