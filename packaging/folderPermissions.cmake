# Run by cpack before it packs. CMake makes folders as the packager's umask says, and a package that users may not
# look into is of no use to them.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_DIRECTORY}
     DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
