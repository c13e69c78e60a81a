# SPDX-License-Identifier: GPL-2.0-or-later
# What `cmake --install` puts where, and the Debian package that CPack makes of it.
include(GNUInstallDirs)

set(data ${PROJECT_SOURCE_DIR}/data)
set(shared ${CMAKE_INSTALL_DATADIR}/corvelin)  # the programs look here for what isn't beside them

install(TARGETS corvelin-cli)
include(cmake/ManualPages.cmake)
install(FILES ${data}/completion/corvelin-cli
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
# Where zsh looks differs for what comes in a package and what its user installs.
install(CODE "
  set(folder site-functions)
  if(CMAKE_INSTALL_PREFIX STREQUAL \"/usr\")
    set(folder vendor-completions)
  endif()
  file(INSTALL \"${data}/completion/_corvelin-cli\"
       DESTINATION \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/zsh/\${folder}\")")
install(DIRECTORY ${data}/languages/ DESTINATION ${shared}/Languages)
install(DIRECTORY ${data}/manual/ DESTINATION ${shared})
install(FILES ${PROJECT_SOURCE_DIR}/License.txt DESTINATION ${shared})

# Only a window belongs on a desktop.
if(TARGET corvelin)
  install(TARGETS corvelin)
  install(FILES ${PROJECT_BINARY_DIR}/src/desktop/Version.txt DESTINATION ${shared})
  install(FILES ${data}/completion/corvelin-cli  # bash looks for a file of the program's name
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME corvelin)
  install(FILES ${data}/desktop/corvelin.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES ${data}/desktop/corvelin.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
  set(about ${PROJECT_BINARY_DIR}/org.example.corvelin.metainfo.xml)
  configure_file(${data}/desktop/corvelin.metainfo.xml.in ${about} @ONLY)
  install(FILES ${about} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(FILES ${data}/desktop/corvelin.svg DESTINATION ${icons}/scalable/apps)
  foreach(size 16 22 24 32 48 64 128 256 512)
    install(FILES ${data}/desktop/icons/${size}.png DESTINATION ${icons}/${size}x${size}/apps
            RENAME corvelin.png)
  endforeach()
endif()

# The package. What is looked up at run time is recommended: the programs start without it.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME corvelin)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "editor and recorder for compressed audio")
set(CPACK_PACKAGE_DESCRIPTION
    "Corvelin cuts, joins, splits and levels MP3, MP2 and AAC files frame by\n\
frame, without decoding them, and records to MP3. It has a window and a\n\
program for the command line.")
set(CPACK_PACKAGE_CONTACT "The Corvelin developers <developers@example.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libmpg123-0, libfaad2, libmp3lame0, libsdl2-2.0-0, qt6-qpa-plugins, qt6-translations-l10n, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "ffmpeg, qt6-wayland")
configure_file(${data}/debian/changelog.in ${PROJECT_BINARY_DIR}/changelog @ONLY)
set(notes ${PROJECT_BINARY_DIR}/changelog.gz)
execute_process(COMMAND ${GZIP} -9nc ${PROJECT_BINARY_DIR}/changelog OUTPUT_FILE ${notes}
                COMMAND_ERROR_IS_FATAL ANY)
install(FILES ${data}/debian/copyright ${notes} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/corvelin)
include(CPack)
