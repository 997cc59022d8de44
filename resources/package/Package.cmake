# The Debian package, made by CPack.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME nibpad71)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Nib maintainers")
set(CPACK_PACKAGE_CONTACT "The Nib maintainers <maintainers@nibpad71.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${NIB_PROJECT_URL}/)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for programs and records of MultiValue databases")
set(CPACK_PACKAGE_DESCRIPTION [[
Nib opens items of MultiValue files, and plain local files, side by side in
one window. It keeps items under lock while they are open and writes them
back in the way they were read: marks, character set and line ends stay.
.
It colours, folds, formats, searches, compiles and prints programs in
MultiValue BASIC, brings changed documents back after a crash, and is driven
by other programs over D-Bus.
.
The package also has nib-basic, a checker of programs, nib-lsp, a language
server that gives other editors what this one knows of programs, and
nib-debuglog, the viewer of the editor's debug log.]])
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The bus service names the program by its path, so the prefix must be the one of the machine in the end.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_CMAKE_PROJECTS
  ${CMAKE_BINARY_DIR} nibpad71 program / ${CMAKE_BINARY_DIR} nibpad71 debian /)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
  WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Libraries are found by what the programs are linked to; these are not linked: the reader of the icons, and the font.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core, libqt6svg6")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "breeze-icon-theme, default-dbus-session-bus | dbus-session-bus, fonts-dejavu-extra, libsecret-1-0, qt6-wayland")
include(CPack)
