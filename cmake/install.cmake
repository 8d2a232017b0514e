# What is installed, by component: library, development, tool, daemon and doc.

set(HALVANE_UNIT_FOLDER lib/systemd/system CACHE STRING "Where systemd finds units")

install(
  TARGETS halvane
  EXPORT halvane_targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          COMPONENT library
          NAMELINK_COMPONENT development)
# In a file of its own: only who links it needs the libraries behind it.
install(
  TARGETS halvane_static
  EXPORT halvane_static_targets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)

# Headers keep their folders: halvane/ie/rsn_ie.h stays halvane/ie/rsn_ie.h.
get_property(public_headers GLOBAL PROPERTY HALVANE_PUBLIC_HEADERS)
foreach(header IN LISTS public_headers)
  cmake_path(RELATIVE_PATH header BASE_DIRECTORY ${PROJECT_SOURCE_DIR} OUTPUT_VARIABLE relative)
  cmake_path(GET relative PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder} COMPONENT development)
endforeach()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/halvane)
foreach(export IN ITEMS halvane_targets halvane_static_targets)
  install(EXPORT ${export} NAMESPACE halvane:: DESTINATION ${package_folder} COMPONENT development)
endforeach()
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/cmake/halvane-config.cmake.in ${PROJECT_BINARY_DIR}/halvane-config.cmake
  INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/halvane-config-version.cmake
                                 COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/halvane-config.cmake
              ${PROJECT_BINARY_DIR}/halvane-config-version.cmake
        DESTINATION ${package_folder} COMPONENT development)

# Relative to the file itself, so that an installed tree can be moved. Folders that the configuration
# names in full stay where they are.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  set(halvane_pc_prefix "${CMAKE_INSTALL_PREFIX}")
else()
  file(RELATIVE_PATH halvane_pc_prefix /x/${CMAKE_INSTALL_LIBDIR}/pkgconfig /x)
  string(PREPEND halvane_pc_prefix "\${pcfiledir}/")
endif()
foreach(folder IN ITEMS LIBDIR INCLUDEDIR)
  set(halvane_pc_${folder} "\${prefix}")
  cmake_path(APPEND halvane_pc_${folder} "${CMAKE_INSTALL_${folder}}")
  string(REPLACE " " "\\ " halvane_pc_${folder} "${halvane_pc_${folder}}")
endforeach()
set(halvane_private_flags ${NETTLE_STATIC_LDFLAGS})
foreach(folder IN LISTS CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES)
  list(REMOVE_ITEM halvane_private_flags -L${folder})
endforeach()
list(REMOVE_DUPLICATES halvane_private_flags)
list(TRANSFORM HALVANE_CXX_RUNTIME PREPEND -l OUTPUT_VARIABLE runtime_flags)
list(APPEND halvane_private_flags ${runtime_flags} -ldl -pthread)
list(JOIN halvane_private_flags " " halvane_private_flags)
configure_file(${PROJECT_SOURCE_DIR}/cmake/halvane.pc.in ${PROJECT_BINARY_DIR}/halvane.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/halvane.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
        COMPONENT development)

if(PROJECT_IS_TOP_LEVEL)
  configure_file(cmake/uninstall.cmake.in ${PROJECT_BINARY_DIR}/uninstall.cmake @ONLY)
  add_custom_target(
    uninstall
    COMMAND ${CMAKE_COMMAND} -P ${PROJECT_BINARY_DIR}/uninstall.cmake
    COMMENT "Removing what the last 'cmake --install' installed")
endif()

if(NOT HALVANE_BUILD_TOOLS)
  return()
endif()

install(TARGETS halvane_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
install(TARGETS halvaned_sim RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
install(DIRECTORY ${HALVANE_SCHEMAS}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/halvane/schemas
        COMPONENT tool FILES_MATCHING PATTERN "*.schema.json")

install(TARGETS halvaned RUNTIME DESTINATION ${CMAKE_INSTALL_SBINDIR} COMPONENT daemon)
install(FILES data/org.halvane.halvaned.conf DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/system.d
        COMPONENT daemon)
install(FILES data/org.halvane.halvaned.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/interfaces
        COMPONENT daemon)
configure_file(cmake/install_daemon.cmake.in ${PROJECT_BINARY_DIR}/install_daemon.cmake @ONLY)
install(SCRIPT ${PROJECT_BINARY_DIR}/install_daemon.cmake COMPONENT daemon)

install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
file(GLOB documents CONFIGURE_DEPENDS docs/*.md)
install(FILES ${documents} DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT doc)
install(DIRECTORY docs/images DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT doc)
# The reference, if somebody has built it.
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
        OPTIONAL)
file(GLOB examples CONFIGURE_DEPENDS examples/*.c examples/*.cpp)
install(FILES ${examples} DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT doc)
