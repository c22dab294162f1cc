# cpack runs this before packing. CMake creates folders with the packager's umask, but users must be able to read the
# folders of a package.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_DIRECTORY}
     DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
