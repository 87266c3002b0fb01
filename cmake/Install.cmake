# `cmake --install build` installs the game and its desktop integration under the prefix; `cpack --config
# build/CPackConfig.cmake` makes a Debian package. The game has no icon file, so none is installed.
if(NOT TARGET gullwick)
    return()
endif()
include(GNUInstallDirs)

install(TARGETS gullwick RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES Packaging/gullwick.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES Packaging/gullwick.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES Packaging/gullwick.6 DESTINATION ${CMAKE_INSTALL_MANDIR}/man6)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/gullwick RENAME copyright)
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
    "A metal detector follows the finger on the trackpad across a beach. It ticks faster the nearer it comes, steadily
for treasure and in pairs for junk. Dig before the tide is in.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Gullwick developers <maintainers@localhost>")
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
