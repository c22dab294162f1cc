# What is installed, and the Debian package of it (cpack in the build folder).

# The program looks for its template in ../share/spannory, from where it stands itself.
install(TARGETS spannory-scan RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${CMAKE_BINARY_DIR}/bin/001.dat DESTINATION ${CMAKE_INSTALL_DATADIR}/spannory)
install(FILES packaging/spannory-scan.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME spannory)
set(CPACK_PACKAGE_CONTACT "The Spannory developers <spannory@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "shows what takes the room on a disk")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Walks a folder, records every file and folder in an SQLite database and\nshows what its subfolders, the file types and the owners take. Writes HTML,\ntext, XML and Excel reports.")
include(CPack)
