# The Debian package, built by CPack: cpack -G DEB in a built tree
# (scripts/package.sh does it all in build/package).

include(GNUInstallDirs)

# The date of the release that PROJECT_VERSION names: set them together. It goes
# into the AppStream metainfo and the Debian changelog.
set(VELMOR_RELEASE_DATE 2026-11-23)
set(VELMOR_RELEASE_DATE_RFC2822 "Mon, 23 Nov 2026 12:00:00 +0000")
set(VELMOR_MAINTAINER "Pelinor Co. <velmor@pelinor.example>")

# cpack installs what is built and builds nothing itself: a package of a tree
# that is not built fails at once instead of building every test program first.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmor)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Pelinor Co.")
set(CPACK_PACKAGE_CONTACT ${VELMOR_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "setup of multi-channel signal-conditioning modules")
set(CPACK_PACKAGE_DESCRIPTION
    "Velmor sets up bridge, strain and pressure amplifier modules with 4, 8 or 16
channels that share one serial line at 4800 baud: it searches the line, reads
and writes each module's parameters, adjust values and calibration
coefficients, starts a bridge balance and keeps a module's setup in a
configuration file. Lines may also be reached through a serial server such as
ser2net. Every text exists in Chinese and English.
.
The package holds the window (velmor), the command-line front end
(velmor-cli) and a simulator of modules on a pseudo-terminal (velmor-sim).")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${VELMOR_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION electronics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# The Qt libraries (and the C++ runtime) are declared from what the binaries
# really link, by dpkg-shlibdeps.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The Chinese interface needs a CJK font; Qt finds either of these. The
# history's embedded store needs Qt's SQLite driver, a plugin that no binary
# links.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-wqy-microhei | fonts-noto-cjk, libqt6sql6-sqlite")
# The window's platform plugin on a Wayland desktop (under X11 it runs
# without), and Qt's PostgreSQL driver for a history shared by a lab.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-wayland, libqt6sql6-psql")
# The reference serial server for lines reached over the network.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS ser2net)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

include(CPack)
