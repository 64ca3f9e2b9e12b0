# What only an installed launcher has, manual pages and the unit, and the Debian packages of the two components. Those
# are made from a build that is configured for /usr (preset `release`): the unit names the executable by its full path.

# Installs `source` compressed, as Debian does it: without the time, so that the same source gives the same bytes.
find_program(GZIP gzip REQUIRED)
function(install_compressed component source destination name)
  set(compressed ${CMAKE_CURRENT_BINARY_DIR}/${component}/${name}.gz)
  add_custom_command(OUTPUT ${compressed} DEPENDS ${source} VERBATIM
    COMMAND ${CMAKE_COMMAND} -E make_directory ${component}
    COMMAND ${GZIP} -9nc ${CMAKE_CURRENT_SOURCE_DIR}/${source} > ${compressed})
  add_custom_target(compress-${component}-${name} ALL DEPENDS ${compressed})
  install(FILES ${compressed} DESTINATION ${destination} COMPONENT ${component})
endfunction()

install_compressed(launcher man/launcher.1 ${CMAKE_INSTALL_MANDIR}/man1 launcher.1)
install_compressed(launcher-dev man/service-module.7 ${CMAKE_INSTALL_MANDIR}/man7 service-module.7)

configure_file(packaging/launcher@.service.in launcher@.service @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/launcher@.service DESTINATION lib/systemd/system COMPONENT launcher)
install(FILES docs/operating.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT launcher)
install(FILES docs/examples/agent.conf DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT launcher)

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL launcher launcher-dev)
set(CPACK_PACKAGE_CONTACT "The launcher developers <launcher@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # Each component's description begins with its own.
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/cmake/package_permissions.cmake)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_LAUNCHER_PACKAGE_NAME launcher)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_SECTION admin)
set(CPACK_DEBIAN_LAUNCHER_PACKAGE_SHLIBDEPS ON)
set(CPACK_COMPONENT_LAUNCHER_DESCRIPTION
"host for service modules
Hosts one service module, a shared library, in a process of its own, keeps a
pid record of it, and stops it again: SIGTERM is answered by calling the
module. With a template unit for systemd.")

set(CPACK_DEBIAN_LAUNCHER-DEV_PACKAGE_NAME launcher-dev)
set(CPACK_DEBIAN_LAUNCHER-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LAUNCHER-DEV_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_LAUNCHER-DEV_PACKAGE_DEPENDS "launcher (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_LAUNCHER-DEV_DESCRIPTION
"host for service modules - kit for authors of modules
The header, the CMake package, the pkg-config file, the manual page and the
examples with which a service module for the launcher is written and built.")

file(STRINGS packaging/changelog latest LIMIT_COUNT 1)
if(NOT latest MATCHES "^launcher \\(${PROJECT_VERSION}\\) ")
  message(FATAL_ERROR "packaging/changelog does not begin with version ${PROJECT_VERSION}: ${latest}")
endif()
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/${component})
  install(FILES packaging/copyright DESTINATION ${doc_dir} COMPONENT ${component})
  install_compressed(${component} packaging/changelog ${doc_dir} changelog)
endforeach()
include(CPack)
