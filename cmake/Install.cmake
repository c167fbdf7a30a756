# Installing the program as a desktop program and making its Debian package.
#   cmake --install build --prefix DIR      the program, its help pages, menu entry, icons, manual
#   cd build && cpack -G DEB                velmorata_<version>_<arch>.deb
include(GNUInstallDirs)

set(VELMORATA_RELEASE_DATE 2026-11-23)
set(PACKAGING_OUT ${CMAKE_BINARY_DIR}/packaging)
set(HELP_INSTALL_DIR ${CMAKE_INSTALL_DATADIR}/velmorata/help)

# An installed program finds its help pages from its own folder, so the package works under any
# prefix; the path from bin/ to share/ follows the install directories chosen here.
file(RELATIVE_PATH HELP_FROM_PROGRAM ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}
     ${CMAKE_INSTALL_PREFIX}/${HELP_INSTALL_DIR})
set_source_files_properties(src/shell/DataFiles.cpp PROPERTIES
  COMPILE_DEFINITIONS "VELMORATA_HELP_FROM_PROGRAM=\"${HELP_FROM_PROGRAM}\"")

configure_file(packaging/velmorata.1 ${PACKAGING_OUT}/velmorata.1 @ONLY)
# A new version gets its entry in packaging/changelog by hand, with the date of its release.
configure_file(packaging/changelog ${PACKAGING_OUT}/changelog @ONLY)
configure_file(packaging/bg.velmorata.velmorata.metainfo.xml ${PACKAGING_OUT}/bg.velmorata.velmorata.metainfo.xml
               @ONLY)

# Debian keeps manual pages compressed; -n leaves out the time, so the same page gives the same file.
find_program(GZIP_PROGRAM gzip REQUIRED)
foreach(page velmorata.1 changelog)
  add_custom_command(OUTPUT ${PACKAGING_OUT}/${page}.gz
    COMMAND ${GZIP_PROGRAM} -9nkf ${PACKAGING_OUT}/${page}
    DEPENDS ${PACKAGING_OUT}/${page})
endforeach()

# The small sizes of the logo are scaled from the 48-pixel picture; larger ones come from the SVG.
set(ICON_SIZES 16 22 24 32 48)
set(ICON_THEME ${PACKAGING_OUT}/hicolor)
set(ICON_FILES)
foreach(size ${ICON_SIZES})
  list(APPEND ICON_FILES ${ICON_THEME}/${size}x${size}/apps/velmorata.png)
endforeach()
add_executable(icon_sizes packaging/icon_sizes.cpp)
target_link_libraries(icon_sizes PRIVATE Qt6::Gui)
add_custom_command(OUTPUT ${ICON_FILES}
  COMMAND icon_sizes ${CMAKE_SOURCE_DIR}/src/shell/ui/icons/Velmorata.png ${ICON_THEME} ${ICON_SIZES}
  DEPENDS icon_sizes ${CMAKE_SOURCE_DIR}/src/shell/ui/icons/Velmorata.png)
add_custom_target(packaging_files ALL DEPENDS ${ICON_FILES} ${PACKAGING_OUT}/velmorata.1.gz ${PACKAGING_OUT}/changelog.gz)

# Relocations are resolved at start and then made read-only, as Debian builds its programs.
target_link_options(velmorata PRIVATE -Wl,-z,relro,-z,now)

install(TARGETS velmorata RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY help/ DESTINATION ${HELP_INSTALL_DIR})
install(FILES packaging/velmorata.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PACKAGING_OUT}/bg.velmorata.velmorata.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(DIRECTORY ${ICON_THEME}/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES packaging/velmorata.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES ${PACKAGING_OUT}/velmorata.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PACKAGING_OUT}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The Debian package. The libraries the program links are found by dpkg-shlibdeps; what it
# loads or uses without linking is named here: the SQLite driver of QtSql, the font of the prints,
# and the Jet reader. The data folder lives in each user's home, so removing the package never
# touches a practice's data.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmorata)
set(CPACK_PACKAGE_VENDOR Velmorata)
set(CPACK_PACKAGE_CONTACT "Velmorata developers <support@velmorata.bg>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "card index of a dental practice under contract with the health fund")
file(READ ${CMAKE_SOURCE_DIR}/packaging/description.txt CPACK_PACKAGE_DESCRIPTION)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://velmorata.bg)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, fonts-dejavu-core, libmdb3, qt6-translations-l10n")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
include(CPack)

if(BUILD_TESTING)
  add_test(NAME install_Prefix
    COMMAND bash ${CMAKE_SOURCE_DIR}/tests/install/installed.sh ${CMAKE_COMMAND} ${CMAKE_BINARY_DIR}
            ${PROJECT_VERSION})
  add_test(NAME install_Package
    COMMAND bash ${CMAKE_SOURCE_DIR}/tests/install/package.sh ${CMAKE_CPACK_COMMAND} ${CMAKE_BINARY_DIR}
            ${PROJECT_VERSION})
  set_tests_properties(install_Prefix install_Package PROPERTIES TIMEOUT 600)
endif()
