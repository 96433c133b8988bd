# The Debian package (cpack -G DEB in the build folder), made from the same install as
# cmake --install. Every program and data file gets its install rule next to its target; this
# file only adds the package's own documents and describes the package.

# Debian wants the copyright and a compressed changelog in the package's document folder.
set(APMASTER_CHANGELOG_GZ ${CMAKE_BINARY_DIR}/packaging/changelog.gz)
add_custom_command(OUTPUT ${APMASTER_CHANGELOG_GZ}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
  COMMAND gzip -9nc ${CMAKE_SOURCE_DIR}/packaging/changelog > ${APMASTER_CHANGELOG_GZ}
  DEPENDS ${CMAKE_SOURCE_DIR}/packaging/changelog
  VERBATIM)
add_custom_target(apmaster_changelog ALL DEPENDS ${APMASTER_CHANGELOG_GZ})
install(FILES ${CMAKE_SOURCE_DIR}/packaging/copyright ${APMASTER_CHANGELOG_GZ}
  DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME apmaster)
set(CPACK_PACKAGE_VENDOR "Velmora Data")
set(CPACK_PACKAGE_CONTACT "Velmora Data <support@velmora.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "vendor module of Velmora Office Accounting")
string(CONCAT CPACK_PACKAGE_DESCRIPTION
  "A/P Master keeps the accounts-payable vendor file of a membership\n"
  "organisation: vendors, their invoices, checks, split G/L detail, notes and\n"
  "user-defined fields, the vendor reports and the year-end 1099 forms.\n"
  "The package holds the module, the sign-in launcher with its desktop entry,\n"
  "the demo company generator and the 1099 system layouts.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The shared libraries the programs link are found by dpkg-shlibdeps; what Qt loads at run time
# (the SQLite driver, the display plugins) and the forms' font are named here.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libqt6sql6-psql, qt6-qpa-plugins, fonts-dejavu-core")
# Help hands the manual to the desktop's PDF viewer through xdg-open; without it, Help shows the
# plain-text help in the suite's editor.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "xdg-utils")
include(CPack)
