# What `play` builds: the game, its resource files, and the window where it can be built.
add_custom_target(play DEPENDS wainroad fastforward resources)
if(TARGET wainroad-desktop)
  add_dependencies(play wainroad-desktop)
endif()
