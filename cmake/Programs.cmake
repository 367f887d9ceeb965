# The programs, the resource files and the benchmarks.

# The game. The desktop module takes the Toolbox from here, so all of it is there and can be seen.
if(EXISTS ${PROJECT_SOURCE_DIR}/Wainroad/Game/main.cpp)
  add_executable(wainroad Wainroad/Game/main.cpp)
  target_link_libraries(wainroad PRIVATE Wainroad)
  foreach(floor Base Data QuickDraw Host Managers App)
    target_link_libraries(wainroad PRIVATE "$<LINK_LIBRARY:WHOLE_ARCHIVE,MacToolbox.${floor}>")
  endforeach()
  set_target_properties(wainroad PROPERTIES ENABLE_EXPORTS ON)

  # The game on a clock that does not wait.
  add_executable(fastforward Tools/fastforward.cpp)
  target_link_libraries(fastforward PRIVATE Wainroad)
endif()
