# SPDX-License-Identifier: MIT
# What goes where when the programs are installed.
include(GNUInstallDirs)
set(share ${CMAKE_INSTALL_DATADIR})
set(doc ${CMAKE_INSTALL_DATAROOTDIR}/doc/ostrel)
set(icons ${share}/icons/hicolor)

find_program(GZIP gzip REQUIRED)
set(made_files)

# ostrel_install_compressed(FILE DESTINATION [NAME]): FILE as NAME.gz, NAME being its own if left out.
function(ostrel_install_compressed file destination)
    cmake_path(GET file FILENAME name)
    if(ARGC GREATER 2)
        set(name ${ARGV2})
    endif()
    set(made ${CMAKE_BINARY_DIR}/install/${name}.gz)
    add_custom_command(OUTPUT ${made} DEPENDS ${file} COMMAND ${GZIP} -9nc ${file} > ${made} VERBATIM)
    install(FILES ${made} DESTINATION ${destination})
    set(made_files ${made_files} ${made} PARENT_SCOPE)
endfunction()

# ostrel_install_icon(NAME SVG CONTEXT SMALL): as it is, and drawn in the usual sizes, 16 pixels from SMALL.
function(ostrel_install_icon name svg context small)
    install(FILES ${svg} DESTINATION ${icons}/scalable/${context} RENAME ${name}.svg)
    foreach(size 16 24 32 48 64 128 256)
        set(drawing ${svg})
        if(size EQUAL 16)
            set(drawing ${small})
        endif()
        set(made ${CMAKE_BINARY_DIR}/install/${size}/${name}.png)
        add_custom_command(OUTPUT ${made} DEPENDS ${drawing} render_icon
            COMMAND render_icon ${drawing} ${size} ${made} VERBATIM)
        install(FILES ${made} DESTINATION ${icons}/${size}x${size}/${context})
        list(APPEND made_files ${made})
    endforeach()
    set(made_files ${made_files} PARENT_SCOPE)
endfunction()

install(TARGETS ostrel ostrel-file velquin-sim)

install(DIRECTORY data/ostrel DESTINATION ${share})
install(FILES data/desktop/ostrel.desktop DESTINATION ${share}/applications)
install(FILES data/desktop/net.ostrel.ostrel_ms.metainfo.xml DESTINATION ${share}/metainfo)
install(FILES data/desktop/ostrel.xml DESTINATION ${share}/mime/packages)

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/install)
foreach(size 16 24 32 48 64 128 256)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/install/${size})
endforeach()
add_executable(render_icon data/desktop/icons/render.cpp)
target_link_libraries(render_icon PRIVATE Qt6::Svg)
set(program_icon ${CMAKE_SOURCE_DIR}/data/pictures/ostrel.svg)
ostrel_install_icon(ostrel ${program_icon} apps ${program_icon})
foreach(type application-x-ostrel-data application-x-ostrel-log)
    set(drawing ${CMAKE_SOURCE_DIR}/data/desktop/icons/${type})
    ostrel_install_icon(${type} ${drawing}.svg mimetypes ${drawing}-16.svg)
endforeach()

foreach(program ostrel ostrel-file velquin-sim)
    ostrel_install_compressed(${CMAKE_SOURCE_DIR}/docs/man/${program}.1 ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
ostrel_install_compressed(${CMAKE_SOURCE_DIR}/docs/man/ostrel-chart.5 ${CMAKE_INSTALL_MANDIR}/man5)
install(FILES data/python/ostrel.py DESTINATION lib/python3/dist-packages) # the same for each architecture
install(FILES .reuse/dep5 DESTINATION ${doc} RENAME copyright)
install(FILES docs/file-format.md docs/interchange.md docs/text-export.md DESTINATION ${doc})
install(DIRECTORY data/simulator/ DESTINATION ${doc}/examples)
ostrel_install_compressed(${CMAKE_SOURCE_DIR}/data/debian/changelog ${doc} changelog.Debian)

add_custom_target(install_files ALL DEPENDS ${made_files})
