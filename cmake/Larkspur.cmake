# Compiler flags, and the few functions with which folders register libraries, modules, tests and benchmarks.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT MSVC)
  # Functions in sections of their own, so that the linker leaves out what nobody calls. Engines are built with -O3.
  set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG -ffunction-sections -fdata-sections")
  # For the sanitizers' reports lines are enough.
  set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -g1 -DNDEBUG")
  if(WIN32)
    add_link_options(-Wl,--gc-sections)
  endif()
endif()

find_program(CCACHE ccache)
if(CCACHE)
  # Without this it does not keep what was compiled with a precompiled header.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

if(WIN32)
  find_package(Qt6 6.5 REQUIRED COMPONENTS Core Gui Widgets Network Test)
  if(CMAKE_CROSSCOMPILING)
    execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/toolchain --positioning
      OUTPUT_VARIABLE LARKSPUR_POSITIONING OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    set(Qt6Positioning_DIR ${LARKSPUR_POSITIONING}/lib/cmake/Qt6Positioning)
  endif()
  find_package(Qt6Positioning 6.5 REQUIRED)
else()
  find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Test)
endif()

if(WIN32)
  include(${CMAKE_CURRENT_LIST_DIR}/../resources/WindowsResources.cmake)
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
if(MINGW)
  # In every executable; see the source.
  add_library(larkspur_thread_exit_order OBJECT ${CMAKE_SOURCE_DIR}/platform/startup/ThreadExitOrder.cpp)
  set_target_properties(larkspur_thread_exit_order PROPERTIES AUTOMOC OFF)
  target_link_libraries(larkspur_flags INTERFACE
    $<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:$<TARGET_OBJECTS:larkspur_thread_exit_order>>)
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

# Qt's test library without its definitions of each target's folders, which no precompiled header could serve.
add_library(larkspur_qtest INTERFACE)
target_include_directories(larkspur_qtest SYSTEM INTERFACE $<TARGET_PROPERTY:Qt6::Test,INTERFACE_INCLUDE_DIRECTORIES>)
target_link_libraries(larkspur_qtest INTERFACE Qt6::Core $<LINK_ONLY:Qt6::Test>)

# Of the tests' own sources: compiling them takes longer than running them.
if(LARKSPUR_SANITIZE)
  set(LARKSPUR_TEST_OPTIONS -O0 -g1)
else()
  set(LARKSPUR_TEST_OPTIONS -O1)
endif()

# Nine tenths of compiling a source are the toolkit's headers. They are parsed once; every source still includes what it
# uses, which the native build of the engines and MSVC show. Tests have a set of their own, in the native build as well.
#
# larkspur_precompiled_headers(NAME LINK library... HEADERS header...): compiled headers that other targets reuse.
function(larkspur_precompiled_headers name)
  cmake_parse_arguments(arg "" "" "LINK;HEADERS" ${ARGN})
  file(GENERATE OUTPUT ${CMAKE_BINARY_DIR}/${name}.cpp CONTENT "")
  add_library(${name} OBJECT ${CMAKE_BINARY_DIR}/${name}.cpp)
  target_link_libraries(${name} PRIVATE larkspur_flags ${arg_LINK})
  # Without the definitions of the toolkit's upper libraries: GCC refuses a precompiled header that was made with one
  # that its user lacks.
  foreach(library Gui Widgets)
    if(TARGET Qt6::${library})
      target_include_directories(${name} SYSTEM PRIVATE $<TARGET_PROPERTY:Qt6::${library},INTERFACE_INCLUDE_DIRECTORIES>)
    endif()
  endforeach()
  if(WIN32)
    list(APPEND arg_HEADERS <QAction> <QApplication> <QBoxLayout> <QCheckBox> <QComboBox> <QHeaderView> <QLabel> <QLineEdit>
      <QMenu> <QPushButton> <QStackedLayout> <QToolButton> <QTreeView> <QWidget>)
  endif()
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS} <QDebug> <QDir> <QFile> <QHash> <QIcon> <QImage> <QPainter>
    <QSet> <QStringList> <QTimer> <algorithm> <array> <atomic> <functional> <memory> <mutex> <optional> <thread> <utility>
    <vector>)
endfunction()

if(WIN32 AND NOT MSVC)
  larkspur_precompiled_headers(larkspur_precompiled LINK Qt6::Core)
endif()
if(NOT MSVC)
  # Not <QTest> itself, which depends on the definitions that the compiled headers must not have, but what it consists of.
  larkspur_precompiled_headers(larkspur_precompiled_tests LINK larkspur_qtest HEADERS
    <QtTest/qtestcase.h> <QtTest/qtestdata.h> <QtTest/qbenchmark.h> <QSignalSpy> <QTemporaryDir> <QBuffer> <random>)
  target_compile_options(larkspur_precompiled_tests PRIVATE ${LARKSPUR_TEST_OPTIONS})
endif()

# larkspur_precompile(TARGET): compiles the target with the precompiled headers, where there are any.
function(larkspur_precompile target)
  if(TARGET larkspur_precompiled)
    target_precompile_headers(${target} REUSE_FROM larkspur_precompiled)
  endif()
endfunction()

# larkspur_library(NAME [LINK library...]): a static library of every source in the current folder (not below it).
function(larkspur_library name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC larkspur_flags ${arg_LINK})
  larkspur_precompile(${name})
endfunction()

# larkspur_module(NAME [LINK library...] [ENGINE_LINK library...]): a module is the folder that calls this. Its pure logic in
# engine/, where it has one, is the portable library NAME_engine; its forms, here and in folders below that have no
# CMakeLists.txt of their own, are the library NAME, on Windows only, which the application links.
function(larkspur_module name)
  cmake_parse_arguments(arg "" "" "LINK;ENGINE_LINK" ${ARGN})
  file(GLOB engine CONFIGURE_DEPENDS engine/*.cpp engine/*.h engine/*/*.cpp engine/*/*.h)
  if(engine)
    add_library(${name}_engine STATIC ${engine})
    target_link_libraries(${name}_engine PUBLIC larkspur_flags core ${arg_ENGINE_LINK})
    if(NOT MSVC)
      target_compile_options(${name}_engine PRIVATE $<$<CONFIG:Release>:-O3>)
    endif()
    larkspur_precompile(${name}_engine)
    set(engine ${name}_engine)
  endif()
  if(NOT WIN32)
    return()
  endif()
  file(GLOB forms CONFIGURE_DEPENDS *.cpp *.h)
  file(GLOB folders LIST_DIRECTORIES true CONFIGURE_DEPENDS *)
  foreach(folder IN LISTS folders)
    if(IS_DIRECTORY ${folder} AND NOT folder MATCHES "/engine$" AND NOT EXISTS ${folder}/CMakeLists.txt)
      file(GLOB more CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
      list(APPEND forms ${more})
    endif()
  endforeach()
  if(forms)
    add_library(${name} STATIC ${forms})
    target_link_libraries(${name} PUBLIC larkspur_flags ${engine} widgets settings platform ${arg_LINK})
    larkspur_precompile(${name})
    set_property(GLOBAL APPEND PROPERTY LARKSPUR_MODULES ${name})
  endif()
endfunction()

# larkspur_companion(NAME DESCRIPTION SOURCES file... [LINK library...]): another executable that is built, deployed and
# packaged beside the application. The description is what Windows shows of the file.
function(larkspur_companion name description)
  if(NOT WIN32)
    return()
  endif()
  cmake_parse_arguments(arg "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} WIN32 ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE larkspur_flags ${arg_LINK})
  larkspur_windows_resources(${name} "${description}")
  set_property(GLOBAL APPEND PROPERTY LARKSPUR_COMPANIONS ${name})
endfunction()

# larkspur_test(NAME LINK library...): the test program NAME.cpp of the current folder. Tests that link only portable
# libraries exist in both builds.
function(larkspur_test name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  # Its one moc file by a rule of its own: AUTOMOC would start CMake and compile an empty source for each program.
  qt_generate_moc(${name}.cpp ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
  add_executable(${name} ${name}.cpp ${CMAKE_CURRENT_BINARY_DIR}/${name}.moc)
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_BINARY_DIR})
  target_link_libraries(${name} PRIVATE larkspur_flags ${arg_LINK} larkspur_qtest)
  if(NOT MSVC)
    # QTRY_COMPARE narrows inside; a source's options stand after those of larkspur_flags.
    set_source_files_properties(${name}.cpp PROPERTIES COMPILE_OPTIONS "-Wno-conversion;${LARKSPUR_TEST_OPTIONS}")
    target_precompile_headers(${name} REUSE_FROM larkspur_precompiled_tests)
  endif()
  add_test(NAME ${name} COMMAND ${name})
  # Side by side: tools/wine-run gives each Windows test a registry and a desktop that no other test uses.
  set_tests_properties(${name} PROPERTIES TIMEOUT 180)
endfunction()

# larkspur_tests(LINK library...): every test program and fuzzer of the current folder that has not been registered yet.
function(larkspur_tests)
  file(GLOB tests CONFIGURE_DEPENDS tst_*.cpp)
  file(GLOB fuzzers CONFIGURE_DEPENDS fuzz_*.cpp)
  foreach(file IN LISTS tests fuzzers)
    get_filename_component(name ${file} NAME_WE)
    if(TARGET ${name})
      get_target_property(folder ${name} SOURCE_DIR)
      if(NOT folder STREQUAL CMAKE_CURRENT_SOURCE_DIR)
        message(FATAL_ERROR "${file} would never run: ${folder} has a test program of that name")
      endif()
    elseif(name MATCHES "^fuzz_")
      larkspur_fuzzer(${name} ${ARGN})
    else()
      larkspur_test(${name} ${ARGN})
    endif()
  endforeach()
endfunction()

# Fails when a test program or a fuzzer of the tree is registered nowhere, and so would never run. Called last.
function(larkspur_check_tests)
  if(WIN32)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS tst_*.cpp)
    if(NOT LARKSPUR_FORMATS)
      list(FILTER files EXCLUDE REGEX "/tests/formats/")
    endif()
  elseif(LARKSPUR_FUZZ)
    file(GLOB_RECURSE files CONFIGURE_DEPENDS fuzz_*.cpp)
  endif()
  foreach(file IN LISTS files)
    get_filename_component(name ${file} NAME_WE)
    if(NOT TARGET ${name})
      message(FATAL_ERROR "No CMakeLists.txt registers ${file}")
    endif()
  endforeach()
endfunction()

# larkspur_fuzzer(NAME LINK library...): NAME.cpp with an LLVMFuzzerTestOneInput; only in a build with clang's coverage.
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
