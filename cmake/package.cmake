# 'cmake --build --preset release --target package' makes Debian packages of what is built, one for
# each component. debian/ makes those of a distribution. Both have the same names and contents, and
# the same scripts.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME halvane)
set(CPACK_PACKAGE_VENDOR "The Halvane developers")
set(CPACK_PACKAGE_CONTACT "The Halvane developers <halvane-developers@localhost.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
# The settings belong below /etc, and the unit names /usr.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development tool daemon doc)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/halvane)
set(CPACK_DEBIAN_PACKAGE_SECTION net)

# The packages, as in debian/control. dpkg-shlibdeps finds the libraries that programs are linked
# with. Those that they load later are named here, and tests/integration/late_libraries checks it.
set(same_version "(= ${PROJECT_VERSION})")
set(soversion ${PROJECT_VERSION_MAJOR})
set(summary "802.11 elements, records of networks, and a Wi-Fi daemon's protocol.")
# Component, package, section, Depends, Recommends, Suggests, Description.
foreach(row IN ITEMS
        "LIBRARY|libhalvane${soversion}|libs|libsystemd0|||Wi-Fi support library"
        "DEVELOPMENT|libhalvane-dev|libdevel|libhalvane${soversion} ${same_version}||halvane-doc, libsystemd-dev, nettle-dev|Wi-Fi support library - development files"
        "TOOL|halvane|net|libarchive13t64 / libarchive13, liblzma5, libnl-genl-3-200, libpcap0.8t64 / libpcap0.8, libsystemd0, zlib1g|dbus-daemon|halvaned|show Wi-Fi networks, captures and 802.11 elements"
        "DAEMON|halvaned|net|default-dbus-system-bus / dbus-system-bus, hostapd, libnl-genl-3-200, passwd|halvane||Wi-Fi daemon that hosts networks"
        "DOC|halvane-doc|doc||||Wi-Fi support library - documents and examples")
  string(REPLACE "|" ";" row "${row}")
  list(POP_FRONT row component package section depends recommends suggests description)
  string(REPLACE " / " " | " depends "${depends}")
  set(CPACK_DEBIAN_${component}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${component}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${component}_PACKAGE_DEPENDS "${depends}")
  set(CPACK_DEBIAN_${component}_PACKAGE_RECOMMENDS "${recommends}")
  set(CPACK_DEBIAN_${component}_PACKAGE_SUGGESTS "${suggests}")
  set(CPACK_DEBIAN_${component}_DESCRIPTION "${description}\n${summary}")

  string(TOLOWER ${component} lower)
  install(FILES debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
          COMPONENT ${lower} EXCLUDE_FROM_ALL)
  install(FILES ${PROJECT_BINARY_DIR}/packaging/changelog.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${lower} EXCLUDE_FROM_ALL)
endforeach()
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOC_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)

file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging)
execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/debian/changelog
                OUTPUT_FILE ${PROJECT_BINARY_DIR}/packaging/changelog.gz)

# What the scripts of debian/ leave to debhelper. As there, a manager that refuses does not keep
# anybody from removing the package.
set(reload "if [ -d /run/systemd/system ]; then\n    systemctl daemon-reload || true\nfi")
set(stop "if [ \"$1\" = remove ] && [ -d /run/systemd/system ]; then\n    systemctl stop halvaned.service || true\nfi")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
             debian/changelog debian/halvaned.postinst debian/halvaned.postrm)
foreach(script IN ITEMS postinst postrm)
  file(READ debian/halvaned.${script} text)
  string(REPLACE "#DEBHELPER#" "${reload}" text "${text}")
  file(WRITE ${PROJECT_BINARY_DIR}/packaging/${script} "${text}")
endforeach()
file(WRITE ${PROJECT_BINARY_DIR}/packaging/prerm "#!/bin/sh\nset -e\n\n${stop}\n")
include(cmake/settings_folder.cmake)
halvane_settings_folder(settings_folder "${CMAKE_INSTALL_SYSCONFDIR}" ${CPACK_INSTALL_PREFIX})
file(WRITE ${PROJECT_BINARY_DIR}/packaging/conffiles "${settings_folder}/halvane/halvaned.conf\n")
file(WRITE ${PROJECT_BINARY_DIR}/packaging/triggers "activate-noawait ldconfig\n")
file(WRITE ${PROJECT_BINARY_DIR}/packaging/shlibs
     "libhalvane ${soversion} libhalvane${soversion} (>= ${PROJECT_VERSION})\n")
set(control_files)
foreach(file IN ITEMS postinst postrm prerm conffiles)
  list(APPEND control_files ${PROJECT_BINARY_DIR}/packaging/${file})
endforeach()
set(CPACK_DEBIAN_DAEMON_PACKAGE_CONTROL_EXTRA "${control_files}")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
    "${PROJECT_BINARY_DIR}/packaging/triggers;${PROJECT_BINARY_DIR}/packaging/shlibs")

include(CPack)
