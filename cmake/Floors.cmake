# What nearly every source includes is compiled once for all targets of a kind (same compiler settings): plain ones, those with
# widgets, and tests of either. The definitions that Qt's modules bring are the same for all of a kind, see Toolbox.cmake.
# Only what many sources include, by name: a whole module's header leaves templates behind that every source then
# instantiates anew (<QtGui> alone costs each a second).
set(DAYLARK_COMMON_HEADERS
  <algorithm> <array> <chrono> <cmath> <deque> <functional> <map> <memory> <optional> <set> <string> <utility> <vector>
  <QByteArray> <QColor> <QDir> <QElapsedTimer> <QFile> <QFileInfo> <QGuiApplication> <QHash> <QIcon> <QImage> <QJsonArray>
  <QJsonObject> <QKeyEvent> <QList> <QObject> <QPainter> <QPainterPath> <QPixmap> <QPointF> <QPointer> <QRectF> <QSize>
  <QString> <QStringList> <QThread> <QTimer> <QUrl> <QVariant>)
set(DAYLARK_WIDGET_HEADERS
  <QAction> <QApplication> <QBoxLayout> <QCheckBox> <QComboBox> <QDBusConnection> <QDialog> <QGridLayout> <QHeaderView>
  <QLabel> <QLineEdit> <QListView> <QMainWindow> <QMenu> <QMenuBar> <QMouseEvent> <QPushButton> <QScreen> <QScrollArea>
  <QSlider> <QStyledItemDelegate> <QTableView> <QToolButton> <QWidget>)
function(daylark_precompile_kind kind)
  file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${kind}.cpp CONTENT "")
  add_library(${kind} STATIC ${CMAKE_CURRENT_BINARY_DIR}/${kind}.cpp)
  set_target_properties(${kind} PROPERTIES AUTOMOC OFF AUTORCC OFF)
  cmake_parse_arguments(ARG "" "" "LIBS;HEADERS" ${ARGN})
  target_link_libraries(${kind} PRIVATE daylark_settings ${ARG_LIBS})
  target_precompile_headers(${kind} PRIVATE ${DAYLARK_COMMON_HEADERS} ${ARG_HEADERS})
endfunction()

function(daylark_precompile target kind)
  target_precompile_headers(${target} REUSE_FROM ${kind})
endfunction()

# daylark_floor(NAME LIBS ...): the folder src/NAME, with its rooms, as one static library, linked with what stands below it.
function(daylark_floor name)
  cmake_parse_arguments(ARG "" "" "LIBS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/${name}/*.cpp ${CMAKE_SOURCE_DIR}/src/${name}/*.h)
  if(NOT sources)
    add_library(daylark_${name} INTERFACE)
    target_link_libraries(daylark_${name} INTERFACE daylark_settings ${ARG_LIBS})
    return()
  endif()
  add_library(daylark_${name} STATIC ${sources})
  set_target_properties(daylark_${name} PROPERTIES LINKER_LANGUAGE CXX)
  target_link_libraries(daylark_${name} PUBLIC daylark_settings ${ARG_LIBS})
  if("Qt6::Widgets" IN_LIST ARG_LIBS)
    daylark_precompile(daylark_${name} daylark_pch_widgets)
  else()
    daylark_precompile(daylark_${name} daylark_pch)
  endif()
endfunction()

# daylark_tests(FLOOR LABEL LIBS ...): tests/FLOOR/*.cpp as one executable, registered test by test with ctest.
function(daylark_tests floor label)
  cmake_parse_arguments(ARG "WIDGETS" "" "LIBS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${floor}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(${floor}_tests ${sources})
  target_link_libraries(${floor}_tests PRIVATE ${ARG_LIBS} daylark_test_support)
  if(ARG_WIDGETS)
    daylark_precompile(${floor}_tests daylark_pch_widget_tests)
  else()
    daylark_precompile(${floor}_tests daylark_pch_tests)
  endif()
  add_test(NAME ${floor} COMMAND ${floor}_tests)
  set_tests_properties(${floor} PROPERTIES LABELS ${label} TIMEOUT 1500)
endfunction()
