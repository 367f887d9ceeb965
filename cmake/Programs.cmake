# The programs, the resource files and the benchmarks.

# The game. The desktop module takes the Toolbox from here, so all of it is there and can be seen.
if(EXISTS ${PROJECT_SOURCE_DIR}/Wainroad/Game/main.cpp)
  set(WR_TOOLBOX_FLOORS Base Data QuickDraw Host Managers App)
  add_executable(wainroad Wainroad/Game/main.cpp)
  target_link_libraries(wainroad PRIVATE Wainroad)
  list(TRANSFORM WR_TOOLBOX_FLOORS PREPEND MacToolbox. OUTPUT_VARIABLE whole)
  list(JOIN whole "," whole)
  set_target_properties(wainroad PROPERTIES ENABLE_EXPORTS ON LINK_LIBRARY_OVERRIDE "WHOLE_ARCHIVE,${whole}")

  # The game on a clock that does not wait.
  if(EXISTS ${PROJECT_SOURCE_DIR}/Tools/fastforward.cpp)
    add_executable(fastforward Tools/fastforward.cpp)
    target_link_libraries(fastforward PRIVATE Wainroad)
  endif()
endif()

# The compiler and inspector of resource files. Its rooms are a library, so that tests can call them.
find_package(yaml-cpp REQUIRED)
file(GLOB rsrc_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Tools/rsrc/*.cpp)
list(REMOVE_ITEM rsrc_sources ${PROJECT_SOURCE_DIR}/Tools/rsrc/main.cpp)
add_library(rsrc_rooms STATIC ${rsrc_sources})
target_link_libraries(rsrc_rooms PUBLIC MacToolbox.Data PNG::PNG yaml-cpp)
add_executable(rsrc Tools/rsrc/main.cpp)
target_link_libraries(rsrc PRIVATE rsrc_rooms)

# The resource files: made again whenever a source changes. A fault stops the build and names its line.
set(bundle ${PROJECT_BINARY_DIR}/Wainroad_Wainroad.bundle)
foreach(name System Wainroad)
  set(folder ${PROJECT_SOURCE_DIR}/Resources/${name})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.yaml ${folder}/*.png ${folder}/*.bdf ${folder}/*.wav)
  add_custom_command(OUTPUT ${bundle}/${name}.rsrc
    COMMAND ${CMAKE_COMMAND} -E make_directory ${bundle}
    COMMAND rsrc build ${folder} ${bundle}/${name}.rsrc
    DEPENDS rsrc ${sources} COMMENT "Resource file ${name}.rsrc" VERBATIM)
  list(APPEND bundle_files ${bundle}/${name}.rsrc)
endforeach()
add_custom_target(resources ALL DEPENDS ${bundle_files})

# Measurements.
add_subdirectory(${PROJECT_SOURCE_DIR}/Bench)
