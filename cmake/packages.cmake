# `cpack` in the build folder makes two Debian packages: kavit with the programs, and libkavit-dev
# with the library. What the programs need is asked of the linker (shlibdeps), not written down; Qt's
# plugins for X11 and for SVG icons come with libraries that the window is linked to.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME kavit)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "push-optimal Sokoban solver")
set(CPACK_PACKAGE_CONTACT "Kavit developers <kavit@example.org>")
set(CPACK_PACKAGE_VENDOR "Kavit developers")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME kavit)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION utils)
if(TARGET kavit)
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "hicolor-icon-theme")
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "qt6-wayland")
endif()
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION
"Kavit finds a solution with the fewest pushes for a level of Sokoban, or
proves that there is none. Levels are read from files, pasted as text or
drawn in the window; solutions are shown as text, replayed on the board
and written to files. kavit-solve does the same on the command line, for
many levels at once and with answers that other programs can read.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkavit-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
"The static libraries kavit::level and kavit::solver with their headers and
their CMake package: the board, its readers, the search from both ends, the
optimizer of the man's moves, and the replay of move strings.")

include(CPack)
