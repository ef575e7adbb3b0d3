# What is installed (`cmake --install`) and the Debian package made of it (`cpack -G DEB`, as ./run.sh --package does).
include(GNUInstallDirs)
# The program has no home on the network yet. Names under "example" belong to nobody and never will: whoever publishes a
# package puts their own here.
set(DAYLARK_APP_ID example.daylark.daylark CACHE STRING "the program's name among all programs, for software catalogues")
set(DAYLARK_HOMEPAGE "" CACHE STRING "where the program is at home; empty: nowhere, and nothing says so")
set(DAYLARK_PICTURES https://daylark.example/pictures CACHE STRING "where a catalogue finds what is in docs/pictures")
set(DAYLARK_CONTACT "Daylark developers <developers@daylark.example>" CACHE STRING
    "who answers for a package made here")
set(DAYLARK_RELEASE_DATE 2026-11-22)
set(desktop ${CMAKE_SOURCE_DIR}/resources/desktop)
set(made ${CMAKE_BINARY_DIR}/package)

# Sizes of the screenshots, out of their headers.
foreach(picture VIEWER TILES)
  string(REPLACE TILES library-tiles ${picture}_FILE ${picture})
  string(REPLACE VIEWER viewer ${picture}_FILE ${${picture}_FILE})
  file(READ ${CMAKE_SOURCE_DIR}/docs/pictures/${${picture}_FILE}.png header OFFSET 16 LIMIT 8 HEX)
  string(SUBSTRING ${header} 0 8 width)
  string(SUBSTRING ${header} 8 8 height)
  math(EXPR ${picture}_WIDTH "0x${width}")
  math(EXPR ${picture}_HEIGHT "0x${height}")
endforeach()
set(homepage)
if(DAYLARK_HOMEPAGE)
  set(homepage "\n  <url type=\"homepage\">${DAYLARK_HOMEPAGE}</url>")
endif()
configure_file(${desktop}/metainfo.xml.in ${made}/${DAYLARK_APP_ID}.metainfo.xml @ONLY)
configure_file(${desktop}/man/daylark.1.in ${made}/daylark.1 @ONLY)
configure_file(${desktop}/changelog.in ${made}/changelog @ONLY)

# Icons in the usual sizes.
add_executable(render-icon ${desktop}/RenderIcon.cpp)
target_link_libraries(render-icon PRIVATE Qt6::Svg)
set(icons)
function(daylark_icon svg name kind)
  foreach(side 16 22 24 32 48 64 128 256 512)
    set(png ${made}/icons/hicolor/${side}x${side}/${kind}/${name}.png)
    add_custom_command(OUTPUT ${png} COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/icons/hicolor/${side}x${side}/${kind}
                       COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen $<TARGET_FILE:render-icon> ${svg} ${side} ${png}
                       DEPENDS render-icon ${svg} VERBATIM)
    list(APPEND icons ${png})
  endforeach()
  set(icons ${icons} PARENT_SCOPE)
  install(FILES ${svg} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/${kind} RENAME ${name}.svg)
endfunction()
daylark_icon(${CMAKE_SOURCE_DIR}/resources/icons/daylark.svg daylark apps)
foreach(type application-x-daylark-session application-x-daylark-bundle)
  daylark_icon(${desktop}/${type}.svg ${type} mimetypes)
endforeach()

# Manual pages and the changelog, packed so that the same input gives the same bytes.
set(manuals)
function(daylark_gzip input output)
  add_custom_command(OUTPUT ${output} COMMAND gzip -9nc ${input} > ${output} DEPENDS ${input})
  set(manuals ${manuals} ${output} PARENT_SCOPE)
endfunction()
add_custom_command(OUTPUT ${made}/daylark-tool.1
                   COMMAND ${desktop}/man/tool-manual.sh $<TARGET_FILE:daylark-tool> ${PROJECT_VERSION} ${DAYLARK_RELEASE_DATE}
                           > ${made}/daylark-tool.1
                   DEPENDS daylark-tool ${desktop}/man/tool-manual.sh ${desktop}/man/daylark-tool.1.head
                           ${desktop}/man/daylark-tool.1.tail)
daylark_gzip(${made}/daylark.1 ${made}/daylark.1.gz)
daylark_gzip(${made}/daylark-tool.1 ${made}/daylark-tool.1.gz)
daylark_gzip(${made}/changelog ${made}/changelog.gz)
add_custom_target(daylark-package-files ALL DEPENDS ${icons} ${manuals})

install(TARGETS daylark daylark-tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS daylark_formats LIBRARY DESTINATION ${DAYLARK_MODULES})
install(FILES ${CMAKE_BINARY_DIR}/${DAYLARK_MODULES}/daylark-formats.needs DESTINATION ${DAYLARK_MODULES})
install(FILES ${desktop}/daylark.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${desktop}/daylark.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages)
install(FILES ${made}/${DAYLARK_APP_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(DIRECTORY ${made}/icons DESTINATION ${CMAKE_INSTALL_DATADIR})
install(FILES ${made}/daylark.1.gz ${made}/daylark-tool.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${desktop}/daylark-tool.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME daylark-tool)
install(FILES ${desktop}/copyright ${made}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The package. Libraries are found out (dpkg-shlibdeps); what is only loaded when the program runs stands here.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME daylark)
set(CPACK_PACKAGE_VENDOR "Daylark developers")
set(CPACK_PACKAGE_CONTACT ${DAYLARK_CONTACT})
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ
                                                WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
if(DAYLARK_HOMEPAGE)
  set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${DAYLARK_HOMEPAGE})
endif()
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Plugins that no library names: the display, and the TIFF that thumbnails are kept in.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "qt6-qpa-plugins, qt6-image-formats-plugins, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "fonts-paratype, fonts-dejavu-core, libgl1-mesa-dri, qt6-wayland, qt6-translations-l10n, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "xdg-desktop-portal, bash-completion")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "review player for film and visual-effects dailies")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION "Daylark plays the dailies of a film or visual-effects production exactly
frame by frame and keeps what is said about them: a status flag, notes,
bookmarks over ranges of frames, drawings on the picture, a live colour
grade. Movies are gathered into playlists; sessions are kept as you go.
.
daylark-tool does the same without a window, for scripts and render farms.")
include(CPack)
