# Compiler settings and the libraries that Daylark stands on.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  # By the compiler's own list of what it read: without that, every miss preprocesses the source a second time. The sloppiness
  # is what precompiled headers need to be cached at all. Paths are taken from the checkout, so that another one hits too.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_DEPEND=1 CCACHE_SLOPPINESS=pch_defines,time_macros
                                  CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} ${CCACHE_PROGRAM})
endif()

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Svg Test Concurrent Network Multimedia)
if(DAYLARK_GUI)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets DBus OpenGLWidgets)
  find_package(OpenGL REQUIRED COMPONENTS EGL)
endif()
find_package(PkgConfig REQUIRED)
pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavformat libavcodec libavutil libswscale libswresample)
pkg_check_modules(OPENCOLORIO REQUIRED IMPORTED_TARGET OpenColorIO)
pkg_check_modules(OPENIMAGEIO REQUIRED IMPORTED_TARGET OpenImageIO)
pkg_check_modules(SOUNDTOUCH REQUIRED IMPORTED_TARGET soundtouch)
if(CMAKE_SYSTEM_NAME STREQUAL Linux)
  pkg_check_modules(PULSE REQUIRED IMPORTED_TARGET libpulse)
  # -D_REENTRANT comes along, which threads give anyway; a definition that others lack would keep headers from being shared.
  set_target_properties(PkgConfig::PULSE PROPERTIES INTERFACE_COMPILE_OPTIONS "")
endif()
pkg_check_modules(MINIUPNPC REQUIRED IMPORTED_TARGET miniupnpc)
find_library(NATPMP_LIBRARY natpmp REQUIRED) # has no description of its own
pkg_check_modules(PLIST REQUIRED IMPORTED_TARGET libplist-2.0)
find_package(CLI11 REQUIRED)

include(GNUInstallDirs)
set(DAYLARK_MODULES ${CMAKE_INSTALL_LIBDIR}/daylark) # seen from where programs lie: ../${DAYLARK_MODULES}
add_library(daylark_settings INTERFACE)
# Several sources in one: what one calls a thing may hide another's name, which is no fault.
target_compile_options(daylark_settings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror
  $<$<BOOL:${CMAKE_UNITY_BUILD}>:-Wno-shadow$<$<CXX_COMPILER_ID:GNU>:;-Wno-subobject-linkage>>)
target_compile_definitions(daylark_settings INTERFACE QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_FOREACH
                                                      QT_DISABLE_DEPRECATED_BEFORE=0x060400)
# The same for every target, whichever modules it links, so that precompiled headers serve all.
target_link_libraries(daylark_settings INTERFACE Qt6::Core)
target_compile_definitions(daylark_settings INTERFACE QT_CORE_LIB QT_GUI_LIB QT_SVG_LIB QT_NETWORK_LIB QT_MULTIMEDIA_LIB
                                                      QT_CONCURRENT_LIB)
target_include_directories(daylark_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)
if(DAYLARK_SANITIZE)
  # -g1 keeps line numbers in reports; vptr needs RTTI of Qt's own classes, which Debian's Qt has not exported.
  target_compile_options(daylark_settings INTERFACE -g1 -O1 -fno-omit-frame-pointer
                         -fsanitize=address,undefined -fno-sanitize=vptr -fno-sanitize-recover=all)
  target_link_options(daylark_settings INTERFACE -fsanitize=address,undefined -fno-sanitize=vptr)
  if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    target_compile_options(daylark_settings INTERFACE -fsanitize=fuzzer-no-link)
  endif()
endif()
