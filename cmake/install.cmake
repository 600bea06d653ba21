# What `cmake --install` puts where, and the Debian package that `cpack` makes of it.
include(cmake/reference.cmake)

install(TARGETS tagmend RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES docs/tagmend.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES docs/fields.md LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${TAGMEND_COMPLETIONS}/bash/tagmend
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${TAGMEND_COMPLETIONS}/zsh/_tagmend
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
install(FILES ${TAGMEND_COMPLETIONS}/fish/tagmend.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

set(TAGMEND_MAINTAINER "The tagmend authors <tagmend@example.org>" CACHE STRING
    "Who answers for the package: name and mail address")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tagmend)
set(CPACK_PACKAGE_CONTACT "${TAGMEND_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor for the metadata in photographs")
set(CPACK_PACKAGE_DESCRIPTION
"tagmend adds, changes and removes EXIF, GPS and maker-note fields and IPTC
captions, keywords and credits in JPEG and TIFF files from the command line.
Everything that is not edited is carried over, the image data byte for byte,
and at every instant a photograph is whole under its own name.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_TAGMEND_DEBIAN ${CMAKE_BINARY_DIR}/debian)  # read by the script
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/debian_layout.cmake)

# Honours SOURCE_DATE_EPOCH, so that a package can be made again byte for byte.
string(TIMESTAMP TAGMEND_CHANGELOG_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/debian_changelog.in ${CMAKE_BINARY_DIR}/debian/changelog @ONLY)
file(READ LICENSE license)
string(REGEX REPLACE "^MIT License\n\nCopyright[^\n]*\n\n" "" license "${license}")
string(REGEX REPLACE "\n\n" "\n.\n" license "${license}")
string(REGEX REPLACE "\n([^\n])" "\n \\1" TAGMEND_LICENSE_PARAGRAPHS " ${license}")
configure_file(cmake/debian_copyright.in ${CMAKE_BINARY_DIR}/debian/copyright @ONLY)

include(CPack)
