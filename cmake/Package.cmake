# SPDX-License-Identifier: MIT
# The Debian package; ./package makes it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ostrel)
set(CPACK_PACKAGE_VENDOR "Ostrel MS developers")
set(CPACK_PACKAGE_CONTACT "Ostrel MS developers <developers@ostrel.invalid>")
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/PackageModes.cmake)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt loads what draws the tool bar's icons at run time, where no tool sees it; fonts and keyboard tables come with Qt.
set(CPACK_DEBIAN_PACKAGE_DEPENDS libqt6svg6)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cups, python3, python3-numpy")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "chart recorder for the Velquin chromatography system")
set(CPACK_PACKAGE_DESCRIPTION
"Ostrel MS listens to a Velquin low-pressure chromatography system on a
serial line and draws UV absorbance and conductivity over time, with event
marks, run labels and the method of the run. Every sample also goes to a log
that outlives a power failure. Runs are saved, compared in tabs, printed and
exported as tables; several instruments can be recorded at a time.

The package also holds ostrel-file, which looks into, checks, converts and
salvages saved runs without a display, a module for Python that reads them, and
velquin-sim, a simulated instrument.")
include(CPack)
