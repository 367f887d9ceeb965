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
