# Installs the launcher, and then the kit for authors of service modules; debian/ makes a package of each. The kit is
# the same on every architecture.
include(CMakePackageConfigHelpers)

set(cmake_dir ${CMAKE_INSTALL_DATADIR}/cmake/launcher)
set(pkgconfig_dir ${CMAKE_INSTALL_DATADIR}/pkgconfig)

write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/launcher-config-version.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
set(prefix /prefix)
cmake_path(RELATIVE_PATH prefix BASE_DIRECTORY /prefix/${pkgconfig_dir} OUTPUT_VARIABLE pkgconfig_to_prefix)
configure_file(cmake/launcher.pc.in launcher.pc @ONLY)
# The unit in debian/ names the places of the package.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS debian/launcher@.service)
file(READ debian/launcher@.service unit)
string(REGEX REPLACE "/usr(/[a-z/]*/launcher)" "${CMAKE_INSTALL_PREFIX}\\1" unit "${unit}")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/launcher@.service "${unit}")

install(TARGETS launcher)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/launcher@.service DESTINATION lib/systemd/system)
install(FILES man/launcher.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES README.md docs/operating.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES docs/examples/agent.conf docs/examples/agent.yaml docs/examples/Dockerfile
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h)
install(FILES cmake/service_module.ld DESTINATION ${CMAKE_INSTALL_DATADIR}/launcher)
install(TARGETS service_module EXPORT launcher-targets)
install(EXPORT launcher-targets NAMESPACE launcher:: DESTINATION ${cmake_dir})
install(FILES cmake/launcher-config.cmake cmake/launcher_add_service_module.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/launcher-config-version.cmake DESTINATION ${cmake_dir})
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/launcher.pc DESTINATION ${pkgconfig_dir})
install(FILES man/service-module.7 DESTINATION ${CMAKE_INSTALL_MANDIR}/man7)
install(FILES docs/service-modules.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY examples/minimal examples/ticker examples/http examples/rust examples/go examples/python
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples)
