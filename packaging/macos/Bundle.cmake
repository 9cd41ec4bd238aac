# Tarvik.app, to be included where the program is defined: the program with its window's module, its icon and, where it is
# found, the framework of updates.
#
#   cmake --build build --target bundle
# makes it complete: with the toolkit's frameworks inside, and signed.

set(TARVIK_UPDATE_KEY "" CACHE STRING "The public key with which updates are signed")
set(TARVIK_SIGN_IDENTITY "-" CACHE STRING "Whose signature the bundle bears; - for one that holds on this machine only")
find_library(TARVIK_SPARKLE Sparkle DOC "Sparkle.framework; without it the program has no updates")

include(${CMAKE_CURRENT_LIST_DIR}/InfoPlist.cmake)
set(app ${PROJECT_BINARY_DIR}/Tarvik.app)
set(contents ${app}/Contents)
set(plist ${CMAKE_CURRENT_BINARY_DIR}/Info.plist)
tarvik_info_plist(${plist})
set_target_properties(tarvik PROPERTIES OUTPUT_NAME Tarvik MACOSX_BUNDLE ON MACOSX_BUNDLE_INFO_PLIST ${plist})

include(${CMAKE_CURRENT_LIST_DIR}/Icon.cmake)
add_custom_command(TARGET tarvik POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory ${contents}/Resources
    COMMAND ${CMAKE_COMMAND} -E copy ${TARVIK_ICON} ${contents}/Resources/Tarvik.icns)
add_dependencies(tarvik tarvik_icon tarvik_preferences_module)
set_target_properties(tarvik_preferences_module PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${contents}/PlugIns)

if(TARVIK_SPARKLE)
    # It is loaded when the program starts, from inside the bundle; ditto keeps the framework's links.
    add_custom_command(TARGET tarvik POST_BUILD
        COMMAND ditto ${TARVIK_SPARKLE} ${contents}/Frameworks/Sparkle.framework)
elseif(TARVIK_FEED_URL)
    message(WARNING "TARVIK_FEED_URL is set, but there is no Sparkle.framework: the program will have no updates")
endif()

# The hardened runtime takes only libraries of the same signer, which a signature for one machine has not.
set(runtime --options runtime --timestamp)
if(TARVIK_SIGN_IDENTITY STREQUAL "-")
    set(runtime)
endif()
find_program(MACDEPLOYQT macdeployqt)
add_custom_target(bundle DEPENDS tarvik
    COMMAND ${MACDEPLOYQT} ${app} -qmldir=${PROJECT_SOURCE_DIR}/src/preferences
            -executable=${contents}/PlugIns/$<TARGET_FILE_NAME:tarvik_preferences_module>
    COMMAND codesign --force --deep ${runtime} --entitlements ${CMAKE_CURRENT_LIST_DIR}/Tarvik.entitlements
            --sign ${TARVIK_SIGN_IDENTITY} ${app}
    COMMAND codesign --verify --deep --strict ${app}
    VERBATIM)
