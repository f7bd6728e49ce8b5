# SPDX-License-Identifier: GPL-3.0-or-later
# Shared settings of our own targets: warnings as errors. Headers are named by
# their folder ("core/plane.h"). Table rows (commands, methods) leave trailing
# fields to their defaults, so missing field initializers are not warned about.

function(wib_target_defaults target)
    target_compile_options(${target} PRIVATE -Wall -Wextra -Werror -Wno-missing-field-initializers)
endfunction()

# The layering is checked by the compiler: a library of a layer folder sees,
# instead of the repository root, a folder of the build tree holding one link
# to its own folder. Libraries it links add theirs, so it sees the layers below
# it and an include from a layer above ("paint/x.h" in core) does not compile.
function(wib_layer_includes target folder)
    set(layer_dir ${CMAKE_BINARY_DIR}/layers/${folder})
    file(MAKE_DIRECTORY ${layer_dir})
    file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${layer_dir}/${folder} SYMBOLIC)
    target_include_directories(${target} PUBLIC ${layer_dir})
endfunction()

# wib_library(<name> SOURCES ... [DEPS ...]) makes the static library wib_<name>.
# The library of a layer folder (<name> is the folder) sees the layers it links;
# any other (the tests' and benchmarks' helpers) sees the whole repository.
function(wib_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
    add_library(wib_${name} STATIC ${ARG_SOURCES})
    wib_target_defaults(wib_${name})
    if(CMAKE_CURRENT_SOURCE_DIR STREQUAL "${PROJECT_SOURCE_DIR}/${name}")
        wib_layer_includes(wib_${name} ${name})
    else()
        target_include_directories(wib_${name} PUBLIC ${PROJECT_SOURCE_DIR})
    endif()
    target_link_libraries(wib_${name} PUBLIC ${ARG_DEPS})
endfunction()

# Tests run on Qt's offscreen platform, with settings and user files of their
# own so that they neither read nor change the user's.
set(WIB_TEST_ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/test-home/config;XDG_DATA_HOME=${CMAKE_BINARY_DIR}/test-home/data")

# wib_test(<name> [OWN_MAIN] SOURCES ... DEPS ...) makes a GoogleTest program registered
# with CTest. OWN_MAIN: the sources bring their own main() (to make a QApplication first).
function(wib_test name)
    cmake_parse_arguments(ARG "OWN_MAIN" "" "SOURCES;DEPS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    wib_target_defaults(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gtest)
    if(NOT ARG_OWN_MAIN)
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
    endif()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
                         PROPERTIES ENVIRONMENT "${WIB_TEST_ENVIRONMENT}")
endfunction()
