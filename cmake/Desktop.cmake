# The windowed host: a module that the game opens when it is to have a window. Built where Qt 6 and SDL 2 are found.

find_package(Qt6 QUIET COMPONENTS Widgets)
find_package(SDL2 QUIET)
if(NOT Qt6_FOUND OR NOT SDL2_FOUND)
  message(STATUS "Qt 6 or SDL 2 is missing: the windowed host is not built")
  return()
endif()

file(GLOB desktop_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Desktop/*.cpp)
list(REMOVE_ITEM desktop_sources ${PROJECT_SOURCE_DIR}/Desktop/Module.cpp)
qt_add_resources(desktop_resources ${PROJECT_SOURCE_DIR}/Desktop/Data/window.qrc)

# Its rooms, compiled once for the module and its tests.
add_library(desktop_rooms OBJECT ${desktop_sources} ${desktop_resources})
target_link_libraries(desktop_rooms PUBLIC wr_options Qt6::Widgets SDL2::SDL2)
target_compile_definitions(desktop_rooms PUBLIC QT_NO_KEYWORDS)

# The Toolbox is the executable's: there is one of each manager in a process.
add_library(wainroad-desktop MODULE ${PROJECT_SOURCE_DIR}/Desktop/Module.cpp)
target_link_libraries(wainroad-desktop PRIVATE desktop_rooms)
set_target_properties(wainroad-desktop PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
add_dependencies(wainroad-desktop wainroad)
