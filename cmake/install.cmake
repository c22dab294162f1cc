# What is installed, and the Debian package of it (cpack in the build folder).

# The programs look for their data files in ../share/spannory, from where they stand themselves.
install(TARGETS spannory-scan RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_BINARY_DIR}/bin/001.dat DESTINATION ${CMAKE_INSTALL_DATADIR}/spannory)
install(FILES packaging/spannory-scan.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
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
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "shows what takes the room on a disk")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Walks a folder, records every file and folder in an SQLite database and\nshows what its subfolders, the file types and the owners take: in a window,\nor printed by the console program spannory-scan. Writes HTML, text, XML and\nExcel reports.")
if(SPANNORY_BUILD_WINDOW)
    # The window opens under X11 with the libraries alone. These are Wayland, the desktop's own icons (drawn as
    # SVG) and opening a file in its program.
    set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
        "qt6-wayland, qt6-svg-plugins | libqt6svg6, adwaita-icon-theme | breeze-icon-theme, hicolor-icon-theme, xdg-utils")
endif()
include(CPack)
