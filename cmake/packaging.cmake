# Installation layout and the Debian package.
# `cmake --install` puts the desktop entry and the icon where desktop environments
# look for them; `cpack -G DEB` (or the `package` target) wraps the same layout
# into kalkora_<version>-<release>_<arch>.deb, installed under /usr.
include(GNUInstallDirs)

install(FILES ${PROJECT_SOURCE_DIR}/packaging/kalkora.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
# An SVG goes under "scalable": menus and docks render it at whatever size they need.
install(FILES ${PROJECT_SOURCE_DIR}/packaging/kalkora.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

set(KALKORA_PACKAGE_MAINTAINER "Kalkora developers <kalkora@example.org>"
    CACHE STRING "Maintainer field of the Debian package")
set(KALKORA_PACKAGE_RELEASE "1" CACHE STRING "Debian revision of the package")

set(CPACK_PACKAGE_NAME kalkora)
set(CPACK_PACKAGE_VENDOR "Kalkora developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${KALKORA_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "numerical-analysis tool for functions of one variable")
# Debian's long description: one paragraph, shown by apt show and package managers.
set(CPACK_PACKAGE_DESCRIPTION
    "Kalkora is a desktop tool for five classic numerical-analysis tasks on a real \
function of one variable: Lagrange and Newton interpolation with the error at a point, \
the natural cubic spline, least-squares polynomials of degree 1 and 2, differentiation \
from a table of points, and integration by the rectangle, trapezoid and Simpson rules \
with the Runge-Romberg error estimate. Each result is plotted, and every intermediate \
quantity of a calculation is written to a run log in the working directory.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# The build type keeps debug information; the package does not need it.
set(CPACK_STRIP_FILES ON)

set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_PACKAGE_NAME kalkora)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${KALKORA_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${KALKORA_PACKAGE_RELEASE})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# dpkg-shlibdeps derives Depends from the libraries the binary actually links
# (Qt 5 core, gui and widgets, Qwt, the C/C++ runtime), with the version floors of
# the symbols it uses. Without it, name the same packages by hand.
find_program(KALKORA_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(KALKORA_DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
else()
  message(STATUS "dpkg-shlibdeps not found: the .deb gets a fixed Depends list")
  set(CPACK_DEBIAN_PACKAGE_DEPENDS
      "libqt5widgets5 (>= 5.15), libqt5gui5 (>= 5.15), libqt5core5a (>= 5.15), \
libqwt-qt5-6, libstdc++6, libgcc-s1, libc6")
endif()

# `package_source`: the source tree without version control or build output.
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "/\\.git/" "/build[^/]*/" "/log-[^/]*\\.txt$" "\\.user$")

# Values reach CPack's config files as written here (quotes, backslashes).
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
