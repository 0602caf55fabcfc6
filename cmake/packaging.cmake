# Installation layout and the Debian package.
# `cmake --install` puts the program, its menu entry and launcher, icon, AppStream
# metadata, manual page and Debian's copyright and changelog files where desktops,
# software centres, man and dpkg look for them; `cpack -G DEB` (or the `package`
# target) wraps the same layout into kalkora_<version>-<release>_<arch>.deb,
# installed under /usr.
include(GNUInstallDirs)

set(kalkora_id org.kalkora.Kalkora)
set(kalkora_src ${PROJECT_SOURCE_DIR}/packaging)
set(kalkora_out ${CMAKE_BINARY_DIR}/packaging)

# The menu starts the program through a launcher that moves its run log out of the
# home folder. The launcher finds the program relative to itself
# (app/CMakeLists.txt installs it to bin/).
set(KALKORA_LAUNCHER_DIR ${CMAKE_INSTALL_LIBEXECDIR}/kalkora)
file(RELATIVE_PATH KALKORA_LAUNCHER_TO_PROGRAM /${KALKORA_LAUNCHER_DIR} /bin/kalkora)
configure_file(${kalkora_src}/kalkora-desktop.in ${kalkora_out}/kalkora-desktop @ONLY)
install(PROGRAMS ${kalkora_out}/kalkora-desktop DESTINATION ${KALKORA_LAUNCHER_DIR})

# The menu entry names the launcher by absolute path, and the prefix is known only
# when installing (/usr inside the package), so the entry is written then.
install(CODE "
  set(KALKORA_LAUNCHER \"\${CMAKE_INSTALL_PREFIX}/${KALKORA_LAUNCHER_DIR}/kalkora-desktop\")
  configure_file(\"${kalkora_src}/${kalkora_id}.desktop.in\"
                 \"${kalkora_out}/${kalkora_id}.desktop\" @ONLY)")
install(FILES ${kalkora_out}/${kalkora_id}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${kalkora_src}/${kalkora_id}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
# An SVG goes under "scalable": menus and docks render it at whatever size they need.
install(FILES ${kalkora_src}/kalkora.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# The manual page and Debian's changelog are installed compressed, by `gzip -n`
# (no name or time stamp inside) so that the same text gives the same bytes.
find_program(KALKORA_GZIP gzip REQUIRED)
function(kalkora_compress source name)
  add_custom_command(OUTPUT ${kalkora_out}/${name}.gz
    COMMAND ${CMAKE_COMMAND} -E copy ${kalkora_src}/${source} ${kalkora_out}/${name}
    COMMAND ${KALKORA_GZIP} -n -9 -f ${kalkora_out}/${name}
    DEPENDS ${kalkora_src}/${source} VERBATIM)
endfunction()
kalkora_compress(kalkora.1 kalkora.1)
kalkora_compress(changelog changelog.Debian)
add_custom_target(kalkora_compressed_docs ALL
  DEPENDS ${kalkora_out}/kalkora.1.gz ${kalkora_out}/changelog.Debian.gz)
install(FILES ${kalkora_out}/kalkora.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${kalkora_src}/copyright ${kalkora_out}/changelog.Debian.gz
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/kalkora)
install(FILES ${kalkora_src}/lintian-overrides
        DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME kalkora)

set(KALKORA_PACKAGE_MAINTAINER "Kalkora developers <kalkora@example.org>"
    CACHE STRING "Maintainer field of the Debian package")
set(KALKORA_PACKAGE_RELEASE "1" CACHE STRING "Debian revision of the package")

set(CPACK_PACKAGE_NAME kalkora)
set(CPACK_PACKAGE_VENDOR "Kalkora developers")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${KALKORA_PACKAGE_MAINTAINER}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY
    "numerical-analysis tool for functions of one variable")
# Debian's long description, shown by apt show and package managers. CPack
# indents each line by one blank and turns the empty line into " .", so the
# lines below are kept to 78 characters at most.
set(CPACK_PACKAGE_DESCRIPTION
"Kalkora is a desktop tool for five classic numerical-analysis tasks on a
real function of one variable, given as a formula or as a table of points:
Lagrange and Newton interpolation with the error at a point, the natural
cubic spline, least-squares polynomials of degree 1 and 2, differentiation
from a table of points, and integration by the rectangle, trapezoid and
Simpson rules with the Runge-Romberg error estimate.

Each result is plotted, and every intermediate quantity of a calculation is
written to a run log. The window's texts are in Russian.")
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

# Depends: the packages named here, merged by CPack with what dpkg-shlibdeps
# derives from the libraries the binary actually links (Qt 5 core, gui,
# widgets, print support and SVG, Qwt, the C/C++ runtime) with the version floors of the symbols it
# uses. Without dpkg-shlibdeps, those libraries are named by hand.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-crosextra-carlito")
find_program(KALKORA_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(KALKORA_DPKG_SHLIBDEPS)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
else()
  message(STATUS "dpkg-shlibdeps not found: the .deb gets a fixed Depends list")
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS
         ", libqt5widgets5 (>= 5.15), libqt5gui5 (>= 5.15), libqt5core5a (>= 5.15), \
libqt5printsupport5 (>= 5.15), libqt5svg5 (>= 5.15), libqwt-qt5-6, libstdc++6, libgcc-s1, libc6")
endif()

# `package_source`: the source tree without version control or build output.
set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_IGNORE_FILES "/\\.git/" "/build[^/]*/" "/log-[^/]*\\.txt$" "\\.user$")

# Values reach CPack's config files as written here (quotes, backslashes).
set(CPACK_VERBATIM_VARIABLES ON)
include(CPack)
