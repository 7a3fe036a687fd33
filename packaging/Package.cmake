# The Debian package: "cpack --preset release" makes it of the release build, in build/release.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quavernet)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Greyfinch Labs")
set(CPACK_PACKAGE_CONTACT "Greyfinch Labs <quavernet@example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL https://quavernet.example.org)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "library of the music on your disks, with a player")
set(CPACK_PACKAGE_DESCRIPTION
"Quavernet scans folders for MP3, Ogg Vorbis and WAV files and keeps one row
for each file in a library: search it, filter it, sort it, and arrange it in
a tree of your own categories.

It plays music in a window with a queue, reads and writes M3U playlists, edits
tags and file names, keeps covers for albums, ranks what you play most, prints
the list and encodes WAV files to MP3. It speaks English and German.")
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${CMAKE_BINARY_DIR};${PROJECT_NAME};program;/;${CMAKE_BINARY_DIR};${PROJECT_NAME};debian;/")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# What the program is linked with is found by itself. By name come: the media engine, which is loaded while the program
# runs; Qt's readers of SVG and WebP pictures and its texts in German; the opener of other programs; what the encoder
# calls.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "libmpv2, libqt6svg6, qt6-image-formats-plugins, qt6-translations-l10n, xdg-utils, python3, lame, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libnotify-bin, xdg-user-dirs, qt6-wayland")
include(CPack)
