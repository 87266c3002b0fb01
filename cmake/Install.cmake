# `cmake --install build` installs the game and its desktop integration under the prefix; `cpack --config
# build/CPackConfig.cmake` makes a Debian package of it, and ./package does so from a checkout and checks the result.
if(NOT TARGET gullwick)
    return()
endif()
include(GNUInstallDirs)

# Games have a place of their own on Debian; elsewhere, say so: -DGULL_BINDIR=bin.
set(GULL_BINDIR games CACHE STRING "Where the program goes, below the prefix")
# Stores show pictures only from the web. `gullwick --shot` makes them; none is kept anywhere yet.
set(GULL_SCREENSHOT_URL "" CACHE STRING "Address of a screenshot, for the store page; empty: none is shown")
set(GULL_SCREENSHOTS "")
if(GULL_SCREENSHOT_URL)
    set(GULL_SCREENSHOTS "
  <screenshots>
    <screenshot type=\"default\">
      <caption>The detector over the sand of a beach</caption>
      <image>${GULL_SCREENSHOT_URL}</image>
    </screenshot>
  </screenshots>")
endif()

file(READ LICENSE LICENSE_TEXT)
string(REGEX REPLACE "^.*\n\n(Permission .*[^\n])\n*$" "\\1" LICENSE_TEXT "${LICENSE_TEXT}")
string(REPLACE "\n\n" "\n.\n" LICENSE_TEXT "${LICENSE_TEXT}")
string(REPLACE "\n" "\n " LICENSE_TEXT " ${LICENSE_TEXT}")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS LICENSE)

set(packaging ${PROJECT_BINARY_DIR}/packaging)
configure_file(Packaging/gullwick.desktop.in ${packaging}/${GULL_APP_ID}.desktop)
configure_file(Packaging/gullwick.metainfo.xml.in ${packaging}/${GULL_APP_ID}.metainfo.xml)
configure_file(Packaging/copyright.in ${packaging}/copyright)

install(TARGETS gullwick RUNTIME DESTINATION ${GULL_BINDIR})
# The program draws its icon; there is no picture file to install.
install(CODE "execute_process(COMMAND \"$<TARGET_FILE:gullwick>\" --app-icons \"${packaging}/hicolor\"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)")
install(DIRECTORY ${packaging}/hicolor DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES ${packaging}/${GULL_APP_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${packaging}/${GULL_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES Packaging/gullwick.6 DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES ${packaging}/copyright Packaging/changelog DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/gullwick)
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
    # udev looks in lib whatever the library folder of the machine is called.
    install(FILES Packaging/70-gullwick-touchpad.rules Packaging/74-gullwick-touchpad.rules
        DESTINATION lib/udev/rules.d)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME gullwick)
set(CPACK_PACKAGE_VENDOR "The Gullwick developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "hunt for treasure on a beach under your trackpad")
set(CPACK_PACKAGE_DESCRIPTION
    "The trackpad is a beach: slide one finger across it, and a metal detector
follows over the sand. It ticks faster the nearer it comes to something,
steadily for treasure and in pairs for junk. Click to dig, and finish
before the tide comes in.
.
There are eight beaches, buried differently every time. The game can also
be played with a mouse, the keys or a game controller, without sound and
without a graphics card.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PROJECT_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/FinishPackage.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Gullwick developers <maintainers@example.org>")
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${CMAKE_SOURCE_DIR}/Packaging/postinst;${CMAKE_SOURCE_DIR}/Packaging/postrm")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Loaded at run time, or data, so not found among the linked libraries.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libgl1, libegl1, libdecor-0-plugin-1-cairo | libdecor-0-plugin-1-gtk, fonts-jetbrains-mono, fonts-vollkorn, fonts-inter, fonts-liberation, fonts-dejavu-core")
# Japanese texts need it; without it the game stays in English.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-noto-cjk")
include(CPack)
