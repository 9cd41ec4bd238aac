# Compiler settings that hold for every target.

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

# Rows of tables leave out what they do not have (their members have initialisers), and the EXPECT macros hang an else.
add_compile_options(-Wall -Wextra -Wpedantic -Werror -Wnon-virtual-dtor -Wno-missing-field-initializers -Wno-dangling-else)

if(TARVIK_SANITIZE)
    add_compile_options(-fsanitize=${TARVIK_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${TARVIK_SANITIZE})
endif()

if(TARVIK_FUZZ)
    # Every room tells the fuzzers where it has been. The warnings of this compiler stop nobody: the adapters are built
    # with another one.
    add_compile_options(-fsanitize=fuzzer-no-link -Wno-error)
endif()

# The rooms are part of the program and of the module of its window.
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

if(NOT TARVIK_SANITIZE) # which have means of their own
    include(cmake/Hardening.cmake)
endif()
