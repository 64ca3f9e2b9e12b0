# What is installed where. Two components, for two packages: `launcher` is what a machine that runs services needs,
# `launcher-dev` what an author of service modules needs. Nothing in the latter depends on the architecture.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(cmake_dir ${CMAKE_INSTALL_DATADIR}/cmake/launcher)
set(pkgconfig_dir ${CMAKE_INSTALL_DATADIR}/pkgconfig)

write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/launcher-config-version.cmake
  COMPATIBILITY SameMajorVersion ARCH_INDEPENDENT)
set(prefix /prefix)
cmake_path(RELATIVE_PATH prefix BASE_DIRECTORY /prefix/${pkgconfig_dir} OUTPUT_VARIABLE pkgconfig_to_prefix)
configure_file(cmake/launcher.pc.in launcher.pc @ONLY)

install(TARGETS launcher RUNTIME COMPONENT launcher)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT launcher)

install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT launcher-dev FILES_MATCHING PATTERN *.h)
install(FILES cmake/service_module.ld DESTINATION ${CMAKE_INSTALL_DATADIR}/launcher COMPONENT launcher-dev)
install(TARGETS service_module EXPORT launcher-targets)
install(EXPORT launcher-targets NAMESPACE launcher:: DESTINATION ${cmake_dir} COMPONENT launcher-dev)
install(FILES cmake/launcher-config.cmake cmake/launcher_add_service_module.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/launcher-config-version.cmake DESTINATION ${cmake_dir} COMPONENT launcher-dev)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/launcher.pc DESTINATION ${pkgconfig_dir} COMPONENT launcher-dev)
install(FILES docs/service-modules.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT launcher-dev)
install(DIRECTORY examples/minimal examples/ticker examples/http DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples
  COMPONENT launcher-dev)
