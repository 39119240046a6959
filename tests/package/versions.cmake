# SPDX-License-Identifier: MIT
cmake_minimum_required(VERSION 3.25)

# A new version of the program is told to Debian and to the desktop too.

file(STRINGS ${SOURCE}/data/debian/changelog changelog LIMIT_COUNT 1)
if(NOT changelog MATCHES "^ostrel \\(${VERSION}-[0-9]+\\) ")
    message(SEND_ERROR "data/debian/changelog does not begin with version ${VERSION}: ${changelog}")
endif()
file(STRINGS ${SOURCE}/data/desktop/net.ostrel.ostrel_ms.metainfo.xml releases REGEX "<release ")
if(NOT releases MATCHES "^ *<release version=\"${VERSION}\"")
    message(SEND_ERROR "The first release of the metainfo is not version ${VERSION}: ${releases}")
endif()
