# "cpack" in the build folder makes a Debian package of the installation.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tillery)
set(CPACK_PACKAGE_VENDOR "Tillery")
set(CPACK_PACKAGE_CONTACT "Tillery developers <developers@tillery.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop client for Mercurial and Git repositories")
set(CPACK_PACKAGE_DESCRIPTION
  "Tillery keeps a list of your repositories and shows the changed files with their diffs, a box to commit them (whole files or chosen lines), the history with every changeset's files and diffs, and the bookmarks or branches. It runs the installed hg and git for all version control.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION vcs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Shared libraries are found by dpkg-shlibdeps; Qt's SVG plugins, which draw
# the icons, are loaded at run time, and one of the tools is needed to do anything.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, git | mercurial")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "mercurial, git")
include(CPack)
