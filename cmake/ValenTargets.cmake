# What every target of the project shares: language level, warnings, sanitizers, and the few
# functions with which the folders declare their targets.

find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
include(CheckPIESupported)
check_pie_supported()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
add_compile_options(-ffunction-sections -fdata-sections)
add_link_options(-Wl,--gc-sections)
if(VALEN_SANITIZE)
    add_compile_options(-fsanitize=${VALEN_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${VALEN_SANITIZE})
endif()

# valen_library(Common SOURCES a.cpp … [PUBLIC libs …] [PRIVATE libs …]) makes valen_common with the
# alias Valen::Common. Headers are included by their path below Src ("Vl/Common/…").
function(valen_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    string(TOLOWER valen_${name} target)
    add_library(${target} STATIC ${ARG_SOURCES})
    add_library(Valen::${name} ALIAS ${target})
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/Src)
    target_link_libraries(${target} PUBLIC ${ARG_PUBLIC} PRIVATE ${ARG_PRIVATE})
endfunction()

# Sources that are little but the templates of others (CLI11, nlohmann-json): with sanitizers they take minutes to
# optimise, so that they are left as they are.
function(valen_unoptimised_with_sanitizers)
    if(VALEN_SANITIZE)
        set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -O0)
    endif()
endfunction()

# Most of a test is GoogleTest's templates, which take twice as long to optimise, and to instrument in full, as to
# compile: tests are built plainly. What is tested is built as ever.
function(valen_test_options name)
    target_compile_options(${name} PRIVATE -O0)
    if(VALEN_SANITIZE)
        target_compile_options(${name} PRIVATE -g1)
    endif()
    if(VALEN_SANITIZE MATCHES "undefined")
        target_compile_options(${name} PRIVATE -fno-sanitize=null,alignment,vptr)
    endif()
endfunction()

# valen_test(Name SOURCES a.cpp … [LIBS libs …] [LABEL label] [TIMEOUT seconds] [THREADS]) makes one GoogleTest
# program and registers every test case in it with ctest. THREADS: it runs several; ThreadSanitizer has nothing to
# see in the others, which are left out of its build.
function(valen_test name)
    cmake_parse_arguments(ARG "THREADS" "LABEL;TIMEOUT" "SOURCES;LIBS" ${ARGN})
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 60)
    endif()
    add_executable(${name} ${ARG_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE ${ARG_LIBS})
    valen_test_options(${name})
    target_precompile_headers(${name} REUSE_FROM test_headers)
    if(VALEN_SANITIZE STREQUAL "thread" AND NOT ARG_THREADS)
        set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
        return()
    endif()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES
        PROPERTIES LABELS "${ARG_LABEL}" TIMEOUT ${ARG_TIMEOUT})
endfunction()
