# The Debian package, made by CPack's DEB generator from the same install
# rules as `cmake --install`: one build system, and dpkg-shlibdeps computes
# the libraries' packages from the binaries. What is loaded at run time
# (Qt's platform and image-format plugins, the landmark model) is named by
# hand. The version is the project's.
find_program(HELP2MAN help2man)
find_program(GZIP gzip REQUIRED)
find_program(SED sed REQUIRED)

# Manual pages made from each program's --help, so they cannot drift from it.
set(man_dir ${CMAKE_BINARY_DIR}/man)
foreach(program bellavenor bellavenor-cli)
  if(program STREQUAL "bellavenor")
    set(summary "retouch portraits on the Linux desktop")
  else()
    set(summary "retouch portraits from the command line, one photo or a whole shoot")
  endif()
  add_custom_command(
    OUTPUT ${man_dir}/${program}.1.gz
    COMMAND ${CMAKE_COMMAND} -E make_directory ${man_dir}
    COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
            ${HELP2MAN} --no-info --no-discard-stderr --section=1 --name=${summary}
            --version-string=${PROJECT_VERSION} --output=${man_dir}/${program}.1 $<TARGET_FILE:${program}>
    # Every heading of --help is a section of its own (EXIT STATUS,
    # SETTINGS FILE), not a part of the one before.
    COMMAND ${SED} -i -e "s/^\\.SS \"\\(.*\\):\"$/.SH \"\\U\\1\"/" ${man_dir}/${program}.1
    COMMAND ${GZIP} -9nf ${man_dir}/${program}.1
    DEPENDS ${program}
    VERBATIM)
  list(APPEND man_pages ${man_dir}/${program}.1.gz)
endforeach()
add_custom_target(man_pages ALL DEPENDS ${man_pages})
install(FILES ${man_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

# The changelog (the package is native: no Debian revision) and copyright
# beside the package's documentation.
add_custom_command(
  OUTPUT ${CMAKE_BINARY_DIR}/changelog.gz
  COMMAND ${GZIP} -9nc ${CMAKE_SOURCE_DIR}/packaging/changelog > ${CMAKE_BINARY_DIR}/changelog.gz
  DEPENDS ${CMAKE_SOURCE_DIR}/packaging/changelog
  VERBATIM)
add_custom_target(debian_changelog ALL DEPENDS ${CMAKE_BINARY_DIR}/changelog.gz)
install(FILES ${CMAKE_BINARY_DIR}/changelog.gz ${CMAKE_SOURCE_DIR}/packaging/copyright
        DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/bellavenor)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME bellavenor)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "Bellavenor developers <developers@bellavenor.org>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://bellavenor.org/")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libdlib-data, qt6-qpa-plugins, qt6-image-formats-plugins")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, xdg-utils")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "portrait retoucher for the Linux desktop")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Bellavenor finds the face on a portrait, its 68 landmarks and regions, and
offers ten effects on them: skin smoothing, wrinkle removal, eye colour, eye
widening, eye shadow, under-eye darkening, cheek blush, lip colour, teeth
whitening and blemish healing. The picture is always rebuilt from the
untouched photo, so effects switch on and off in any order.

bellavenor-cli retouches one photo or a whole shoot with the same code.")
include(CPack)
