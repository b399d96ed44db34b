# Installing TILO and building its Debian package (scripts/package runs CPack).
# Everything lands under /usr: the programs, the menu entry and its icon, the
# AppStream description, the man pages and the copyright.
include(GNUInstallDirs)

# The package is made from what the normal build made: installing builds
# nothing more (scripts/package builds the few targets it needs first).
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(TILO_APP_ID org.tilo_retail.tilo)
set(packaging ${PROJECT_SOURCE_DIR}/packaging)
set(doc_dir ${CMAKE_INSTALL_DATAROOTDIR}/doc/tilo)

# A build that leaves a program out (a fuzzing build, say) still configures;
# scripts/package --check finds any program missing from the package.
foreach(program tilo tilo-newshop tilo-cardsim)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endforeach()

install(FILES ${packaging}/${TILO_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/applications)
install(FILES ${packaging}/${TILO_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/metainfo)
install(FILES ${packaging}/icons/tilo.svg
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/scalable/apps)
foreach(size 16 22 24 32 48 64 128 256)
  install(FILES ${packaging}/icons/tilo-${size}.png
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/icons/hicolor/${size}x${size}/apps
          RENAME tilo.png)
endforeach()
install(FILES ${packaging}/copyright DESTINATION ${doc_dir})

# Man pages and the changelog go in gzipped (-n: no name or time stamp, so the
# same sources give the same bytes).
set(gzipped "")
foreach(page tilo tilo-newshop tilo-cardsim)
  configure_file(${PROJECT_SOURCE_DIR}/man/${page}.1 ${CMAKE_BINARY_DIR}/man/${page}.1 @ONLY)
  add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/man/${page}.1.gz
                     COMMAND gzip -9nkf ${CMAKE_BINARY_DIR}/man/${page}.1
                     DEPENDS ${CMAKE_BINARY_DIR}/man/${page}.1)
  list(APPEND gzipped ${CMAKE_BINARY_DIR}/man/${page}.1.gz)
  install(FILES ${CMAKE_BINARY_DIR}/man/${page}.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endforeach()
add_custom_command(OUTPUT ${CMAKE_BINARY_DIR}/packaging/changelog.gz
                   COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/packaging
                   COMMAND gzip -9nc ${packaging}/changelog > ${CMAKE_BINARY_DIR}/packaging/changelog.gz
                   DEPENDS ${packaging}/changelog)
list(APPEND gzipped ${CMAKE_BINARY_DIR}/packaging/changelog.gz)
install(FILES ${CMAKE_BINARY_DIR}/packaging/changelog.gz DESTINATION ${doc_dir})
add_custom_target(tilo_docs_gz ALL DEPENDS ${gzipped})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tilo)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The TILO developers")
set(CPACK_PACKAGE_CONTACT "The TILO developers <tilo@tilo-retail.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "point of sale for a small shop, with its back office")
# Lines under 80 characters, as Debian's tools want them.
string(CONCAT CPACK_PACKAGE_DESCRIPTION
       "TILO is the till of a small shop with a single till, and the shop's\n"
       "whole back office: the inventory, the customers and their accounts, the\n"
       "suppliers, a reminder diary, the takings and the reports. It takes cash,\n"
       "cheques, cards and sales on account, prints receipts and invoices, opens\n"
       "the cash drawer and drives the pole display.\n"
       "\n"
       "The menu entry opens the user's own shop in ~/TILO, made on the first\n"
       "launch with a demo shop or an empty one.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
# Libraries come from the binaries (dpkg-shlibdeps); what they load at run time
# by name does not show there: Qt's X11 platform plugin and the screen's fonts.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, fonts-dejavu-core")
# The till's sounds play through aplay when it is there.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "alsa-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
