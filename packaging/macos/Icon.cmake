# The bundle's icon, in TARVIK_ICON.

find_package(Qt6 6.4 REQUIRED COMPONENTS Gui Svg)
add_executable(make_icns ${CMAKE_CURRENT_LIST_DIR}/make_icns.cpp)
target_link_libraries(make_icns PRIVATE Qt6::Gui Qt6::Svg)

set(TARVIK_ICON ${CMAKE_CURRENT_BINARY_DIR}/Tarvik.icns)
set(drawing ${PROJECT_SOURCE_DIR}/packaging/icons/hicolor/scalable/apps/tarvik.svg)
add_custom_command(OUTPUT ${TARVIK_ICON} COMMAND make_icns ${drawing} ${TARVIK_ICON} DEPENDS make_icns ${drawing})
add_custom_target(tarvik_icon DEPENDS ${TARVIK_ICON})
