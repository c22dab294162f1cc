# The installed files, and the Debian package (run cpack in the build folder).

# The programs look for their data files in ../share/spannory, relative to their own folder.
install(TARGETS spannory-scan RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_BINARY_DIR}/bin/001.dat DESTINATION ${CMAKE_INSTALL_DATADIR}/spannory)
install(FILES packaging/spannory-scan.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
if(CMAKE_SYSTEM_NAME STREQUAL Linux) # switched on by users (README.md)
    install(FILES packaging/spannory-keep@.service packaging/spannory-keep@.timer DESTINATION lib/systemd/user)
endif()
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

if(SPANNORY_BUILD_WINDOW)
    install(TARGETS spannory RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${CMAKE_BINARY_DIR}/bin/2.avi DESTINATION ${CMAKE_INSTALL_DATADIR}/spannory)
    install(FILES packaging/spannory.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES packaging/spannory.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES packaging/org.spannory.spannory.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    install(DIRECTORY ${CMAKE_BINARY_DIR}/artwork/icons DESTINATION ${CMAKE_INSTALL_DATADIR})
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME spannory)
set(CPACK_PACKAGE_CONTACT "The Spannory developers <spannory@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/folderPermissions.cmake)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "shows what uses the space on a disk")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Scans a folder, records every file and folder in an SQLite database and\nshows how much space the subfolders, file types and owners use, in a window\nor in the terminal (spannory-scan). Writes HTML, text, XML and Excel reports.")
if(SPANNORY_BUILD_WINDOW)
    # The window opens under X11 with the libraries alone. These packages add Wayland, the desktop's own icons (in SVG)
    # and opening files in their applications.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
        "qt6-wayland, qt6-svg-plugins | libqt6svg6, adwaita-icon-theme | breeze-icon-theme, hicolor-icon-theme, xdg-utils")
endif()
include(CPack)
