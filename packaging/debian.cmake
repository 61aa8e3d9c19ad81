# The Debian package.
set(changelog ${CMAKE_CURRENT_BINARY_DIR}/changelog.gz)
add_custom_command(OUTPUT ${changelog}
  COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/debian-changelog ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${changelog}
  DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md debian-changelog VERBATIM)
add_custom_target(changelog ALL DEPENDS ${changelog})
install(FILES ${changelog} DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "VK32 maintainers <info@norvanta.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "configuration software for Norvanta gateways")
set(CPACK_PACKAGE_DESCRIPTION "VK32 reads the parameters of an industrial gateway over a serial port,
shows them page by page, writes them back, and keeps them in files. It
replaces firmware, and talks to recovery menus. A simulated gateway for
learning and testing comes with it.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
    WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION comm)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://www.norvanta.example)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-qpa-plugins, qt6-wayland, xdg-utils")
include(CPack)
