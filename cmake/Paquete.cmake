# The Debian package, made by `make paquete` from what `cmake --install` puts in place.
set(ONDALIS_RESPONSABLE "Ondalis maintainers <maintainers@users.noreply.c-seed-d3e2fdb2.example>" CACHE STRING
    "Who stands in the package as its maintainer")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ondalis)
set(CPACK_PACKAGE_VENDOR Ferrano)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reads aloud the texts that you copy (Spanish interface)")
set(CPACK_PACKAGE_DESCRIPTION
"Ondalis lives in the notification area of the desktop. A text copied in any
program is heard at once; global keys pause it, silence it, repeat it and move
through it by words, whatever window has the focus. Short sounds and spoken
notices tell what a key did, or why it did nothing.

It is made for blind and low-vision people and for everyone who would rather
listen. Its interface and its help are in Spanish; it speaks with Spanish
voices of its own and with those of eSpeak NG.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The bus needs the program's real path in a file, so the installation has to know the prefix: no staging prefix.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# All that is installed but the licence's text, which every Debian system has, and what only a package carries.
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${CMAKE_BINARY_DIR};Ondalis;Unspecified;/;${CMAKE_BINARY_DIR};Ondalis;debian;/")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${ONDALIS_RESPONSABLE}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Found by no linker: the engine's data, Qt's Spanish texts, the theme that the icons belong to.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "espeak-ng-data, qt6-translations-l10n, hicolor-icon-theme")
# The reader runs without them, but silent, or out of reach for other programs.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "pipewire-pulse | pulseaudio, default-dbus-session-bus | dbus-session-bus")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

ondalis_comprime(${CMAKE_SOURCE_DIR}/packaging/debian/changelog ${CMAKE_BINARY_DIR}/packaging/changelog.gz)
list(APPEND comprimidos ${CMAKE_BINARY_DIR}/packaging/changelog.gz)
install(FILES ${CMAKE_BINARY_DIR}/packaging/changelog.gz packaging/debian/copyright
    DESTINATION ${ondalis_datos}/doc/ondalis COMPONENT debian EXCLUDE_FROM_ALL)
include(CPack)
