# A mistake in reading what a stranger wrote ends the program, and is not taken over. tests/checks/hardened.py looks at
# what was built. GCC and clang know different ones of these.

include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)

foreach(option IN ITEMS -fstack-protector-strong -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "TARVIK_HAS${option}" has)
    check_cxx_compiler_flag("-Werror ${option}" ${has})
    if(${has})
        add_compile_options(${option})
    endif()
endforeach()

if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug") # the C library checks only what is optimised
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
    set(CMAKE_REQUIRED_FLAGS "-O2 -Werror -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3")
    check_cxx_source_compiles("#include <cstring>\nint main() { return 0; }" TARVIK_HAS_FORTIFY_3)
    unset(CMAKE_REQUIRED_FLAGS)
    # Compilers and packagers may have set a level of their own.
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=$<IF:$<BOOL:${TARVIK_HAS_FORTIFY_3}>,3,2>)
endif()

if(NOT APPLE)
    add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
endif()
