# Fills in the bundle's Info.plist. Also used as a script, by its test.

function(tarvik_info_plist output)
    # Without a feed there must be no key at all: the updates are present where it is.
    set(update_keys "")
    if(TARVIK_FEED_URL)
        string(APPEND update_keys "\n    <key>SUFeedURL</key>\n    <string>${TARVIK_FEED_URL}</string>")
    endif()
    if(TARVIK_UPDATE_KEY)
        string(APPEND update_keys "\n    <key>SUPublicEDKey</key>\n    <string>${TARVIK_UPDATE_KEY}</string>")
    endif()
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/Info.plist.in ${output} @ONLY)
endfunction()

if(CMAKE_SCRIPT_MODE_FILE)
    tarvik_info_plist(${OUTPUT})
endif()
