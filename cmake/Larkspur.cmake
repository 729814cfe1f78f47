# Compiler flags, and the few functions with which folders register libraries, modules, tests and benchmarks.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

if(WIN32)
  find_package(Qt6 6.5 REQUIRED COMPONENTS Core Gui Widgets Network Test)
else()
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Test)
endif()

# Every target links this one; it carries all flags.
add_library(larkspur_flags INTERFACE)
target_include_directories(larkspur_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_definitions(larkspur_flags INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
if(MSVC)
  target_compile_options(larkspur_flags INTERFACE /W4 /WX /utf-8 /permissive- /Zc:__cplusplus)
else()
  target_compile_options(larkspur_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
    -Wsign-conversion -Wnon-virtual-dtor -Woverloaded-virtual -Wno-missing-field-initializers -Werror -fstack-protector-strong)
  # In what users run as well: an index beyond the end ends the program instead of changing memory, in a program that
  # removes files.
  target_compile_definitions(larkspur_flags INTERFACE _GLIBCXX_ASSERTIONS)
endif()
if(WIN32)
  target_compile_definitions(larkspur_flags INTERFACE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN
    _WIN32_WINNT=0x0A00 WINVER=0x0A00)
endif()
if(LARKSPUR_SANITIZE)
  target_compile_options(larkspur_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(larkspur_flags INTERFACE -fsanitize=address,undefined)
endif()
if(LARKSPUR_FUZZ)
  # In the libraries too: a fuzzer that does not see their branches only guesses.
  target_compile_options(larkspur_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# larkspur_library(NAME [LINK library...]): a static library of every source in the current folder (not below it).
function(larkspur_library name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC larkspur_flags ${arg_LINK})
endfunction()

# larkspur_module(NAME [LINK library...]): a module's folder: engine/ is the portable library NAME_engine; the forms,
# on Windows only, are the library NAME, which the application links.
function(larkspur_module name)
  cmake_parse_arguments(arg "" "" "LINK;ENGINE_LINK" ${ARGN})
  file(GLOB engine CONFIGURE_DEPENDS engine/*.cpp engine/*.h)
  add_library(${name}_engine STATIC ${engine})
  target_link_libraries(${name}_engine PUBLIC larkspur_flags core ${arg_ENGINE_LINK})
  file(GLOB forms CONFIGURE_DEPENDS *.cpp)
  if(WIN32 AND forms)
    larkspur_library(${name} LINK ${name}_engine widgets settings platform ${arg_LINK})
    set_property(GLOBAL APPEND PROPERTY LARKSPUR_MODULES ${name})
  endif()
endfunction()

# larkspur_test(NAME LINK library... [GUI]): the test program tests/.../NAME.cpp. Tests that link only portable
# libraries exist in both builds.
function(larkspur_test name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE larkspur_flags ${arg_LINK} Qt6::Test)
  if(NOT MSVC)
    # QTRY_COMPARE narrows inside; a source's options stand after those of larkspur_flags.
    set_source_files_properties(${name}.cpp PROPERTIES COMPILE_OPTIONS -Wno-conversion)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  # All Windows tests share one registry, and forms share one desktop.
  set_tests_properties(${name} PROPERTIES TIMEOUT 120 RUN_SERIAL $<BOOL:${WIN32}>)
endfunction()

# larkspur_fuzzer(NAME LINK library...): NAME.cpp with an LLVMFuzzerTestOneInput; only in the fuzz build.
function(larkspur_fuzzer name)
  if(NOT LARKSPUR_FUZZ)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  add_executable(${name} ${name}.cpp)
  target_link_libraries(${name} PRIVATE larkspur_flags ${arg_LINK})
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  set_property(GLOBAL APPEND PROPERTY LARKSPUR_FUZZERS ${name})
endfunction()

# larkspur_bench(NAME LINK library...): the benchmark bench/NAME.cpp; built by the target "benchmarks".
function(larkspur_bench name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  add_executable(${name} EXCLUDE_FROM_ALL ${name}.cpp)
  target_link_libraries(${name} PRIVATE larkspur_flags ${arg_LINK})
  if(NOT TARGET benchmarks)
    add_custom_target(benchmarks)
  endif()
  add_dependencies(benchmarks ${name})
  if(NOT MSVC)
    # What is compared with is a loop as anybody would write it, without our checks of indexes.
    target_compile_options(${name} PRIVATE -U_GLIBCXX_ASSERTIONS)
  endif()
endfunction()
