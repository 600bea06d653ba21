# Run by cpack on the tree that goes into the package: brings it into the form of Debian Policy,
# chapter 12, where a plain install differs from it.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
set(doc ${root}/share/doc/tagmend)
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH source)

file(REMOVE ${doc}/LICENSE)  # its text is in the copyright file
file(COPY ${CPACK_TAGMEND_DEBIAN}/copyright ${CPACK_TAGMEND_DEBIAN}/changelog
     DESTINATION ${doc}
     FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
execute_process(
  COMMAND gzip --best --no-name --force ${doc}/changelog ${root}/share/man/man1/tagmend.1
  COMMAND_ERROR_IS_FATAL ANY)

# Debian's zsh looks for the completions of packages here.
file(MAKE_DIRECTORY ${root}/share/zsh/vendor-completions)
file(RENAME ${root}/share/zsh/site-functions/_tagmend ${root}/share/zsh/vendor-completions/_tagmend)
file(REMOVE_RECURSE ${root}/share/zsh/site-functions)
