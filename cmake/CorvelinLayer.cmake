# SPDX-License-Identifier: GPL-2.0-or-later
# Declares one level of the code as a library: the folder src/<level>.
#
#   corvelin_layer(model LINKS corvelin_frames corvelin_settings)
#
# Its headers are reached through an include root of the level's own, which only those see that link
# the level. So an include that goes upwards does not compile.
function(corvelin_layer level)
  cmake_parse_arguments(LAYER "" "" "LINKS" ${ARGN})
  set(folder ${PROJECT_SOURCE_DIR}/src/${level})
  set(root ${CMAKE_BINARY_DIR}/include/${level})
  file(MAKE_DIRECTORY ${root})
  file(CREATE_LINK ${folder} ${root}/${level} SYMBOLIC)

  file(GLOB sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*/*.cpp)
  list(REMOVE_ITEM sources ${folder}/main.cpp)  # of a program over the level
  add_library(corvelin_${level} STATIC ${sources})
  target_include_directories(corvelin_${level} PUBLIC ${root})
  target_link_libraries(corvelin_${level} PUBLIC ${LAYER_LINKS})
endfunction()
