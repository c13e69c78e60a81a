# Declares one level of the code as a library.
#
#   corvelin_layer(NAME corvelin_model FOLDER model
#                  HEADERS document.h ... SOURCES document.cpp ... LINKS corvelin_stream ...)
#
# The headers are reached through an include root of the level's own, which holds nothing but these
# headers, and which only those see that link the level. So an include that goes upwards does not
# compile, also between two levels that share a folder.
function(corvelin_layer)
  cmake_parse_arguments(LAYER "" "NAME;FOLDER" "HEADERS;SOURCES;LINKS" ${ARGN})
  set(root ${CMAKE_BINARY_DIR}/include/${LAYER_NAME})
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${LAYER_FOLDER})
  foreach(header IN LISTS LAYER_HEADERS)
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${LAYER_FOLDER}/${header}
         ${root}/${LAYER_FOLDER}/${header} SYMBOLIC)
  endforeach()

  list(TRANSFORM LAYER_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/src/${LAYER_FOLDER}/)
  if(LAYER_SOURCES)
    add_library(${LAYER_NAME} STATIC ${LAYER_SOURCES})
    target_include_directories(${LAYER_NAME} PUBLIC ${root})
    target_link_libraries(${LAYER_NAME} PUBLIC ${LAYER_LINKS})
  else()
    add_library(${LAYER_NAME} INTERFACE)
    target_include_directories(${LAYER_NAME} INTERFACE ${root})
    target_link_libraries(${LAYER_NAME} INTERFACE ${LAYER_LINKS})
  endif()
endfunction()
