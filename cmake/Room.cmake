# A room is one folder of src/: all sources in it, and an explicit list of what it may use.

#   tarvik_room(NAME LINKS target...)
# makes the static library tarvik_NAME of the current folder. The folder is the list of sources.
function(tarvik_room name)
    cmake_parse_arguments(ROOM "" "" "LINKS" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.mm *.h)
    add_library(tarvik_${name} STATIC ${sources})
    target_include_directories(tarvik_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(tarvik_${name} PUBLIC ${ROOM_LINKS})
    set_target_properties(tarvik_${name} PROPERTIES LINKER_LANGUAGE CXX)
endfunction()
