# How the house's targets are made. A target may include what it links and nothing else: its headers are reached through
# a folder of its own in the build tree (<build>/include/<target>), which holds one link to the source folder. So
# "#include <db/DatabaseSession.h>" compiles only where db is linked, and a wrong arrow between layers does not compile.

add_library(arvo_flags INTERFACE)
target_compile_options(arvo_flags INTERFACE -Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wshadow)
target_compile_definitions(arvo_flags INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_USE_QSTRINGBUILDER
  QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(ARVO_WERROR)
  target_compile_options(arvo_flags INTERFACE -Werror)
endif()
if(ARVO_SANITIZE)
  target_compile_options(arvo_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(arvo_flags INTERFACE -fsanitize=address,undefined)
endif()

if(ARVO_FUZZ)
  target_compile_options(arvo_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Programs that read foreign files are built so that a fault in them is hard to use: addresses differ at each start,
# tables of the linker are read-only, overwritten stacks and overlong copies end the program. What costs time of the
# compiler and nothing else is left to optimised builds, which are those that are delivered; the checks of copies need
# the optimiser anyway. tests/cli/HardeningTest.cpp looks at the programs.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection ARVO_HAS_CF_PROTECTION)
set(hardening -fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
if(ARVO_HAS_CF_PROTECTION)
  list(APPEND hardening -fcf-protection)
endif()
target_compile_options(arvo_flags INTERFACE "$<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:${hardening}>")
target_link_options(arvo_flags INTERFACE -pie -Wl,-z,relro,-z,now,-z,noexecstack)

find_program(CCACHE ccache)
if(CCACHE)
  # Without these a clone in another folder, or a precompiled header, would miss every time.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()

# arvo_library(NAME FOLDER [WIDGETS] [LINK target...]): every .cpp and .h directly in the calling folder.
# FOLDER is the path under which the headers are included, e.g. "tarnwick" or "results/dialogs".
# Without WIDGETS the target sees Qt6::Core only: it decides, reads, writes or computes, and is tested without a window.
function(arvo_library name folder)
  cmake_parse_arguments(ARG "WIDGETS" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(sources MATCHES "\\.cpp")
    set(kind STATIC)
    set(scope PUBLIC)
  else()
    set(kind INTERFACE)
    set(scope INTERFACE)
  endif()
  add_library(${name} ${kind} ${sources})
  set(include_dir ${CMAKE_BINARY_DIR}/include/${name})
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY ${include_dir}/${parent})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_dir}/${folder} SYMBOLIC)
  target_include_directories(${name} ${scope} ${include_dir})
  target_link_libraries(${name} ${scope} arvo_flags Qt6::Core ${ARG_LINK})
  if(ARG_WIDGETS)
    target_link_libraries(${name} ${scope} Qt6::Widgets)
  endif()
  if(kind STREQUAL STATIC)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    arvo_precompile(${name} "${ARG_WIDGETS}")
  endif()
endfunction()

# arvo_program(NAME [WIDGETS] [LINK target...] SOURCES file...)
function(arvo_program name)
  cmake_parse_arguments(ARG "WIDGETS" "" "LINK;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE arvo_flags Qt6::Core ${ARG_LINK})
  if(ARG_WIDGETS)
    target_link_libraries(${name} PRIVATE Qt6::Widgets)
  endif()
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
endfunction()

file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/runtime)
file(CHMOD ${CMAKE_BINARY_DIR}/runtime PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)

# arvo_test(NAME [WIDGETS] [LINK target...]): one GoogleTest program of every .cpp in the calling folder, one ctest entry.
function(arvo_test name)
  cmake_parse_arguments(ARG "WIDGETS" "" "LINK" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  if(NOT sources)
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE arvo_flags Qt6::Core test_support ${ARG_LINK} GTest::gtest GTest::gmock)
  target_compile_definitions(${name} PRIVATE ARVO_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}")
  if(ARG_WIDGETS)
    target_link_libraries(${name} PRIVATE Qt6::Widgets Qt6::Test test_gui_main)
  else()
    target_link_libraries(${name} PRIVATE test_main)
  endif()
  set_target_properties(${name} PROPERTIES AUTOMOC ON)
  arvo_precompile(${name} "${ARG_WIDGETS}")
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT 600 ENVIRONMENT
    "QT_QPA_PLATFORM=offscreen;XDG_RUNTIME_DIR=${CMAKE_BINARY_DIR}/runtime;XDG_STATE_HOME=${CMAKE_BINARY_DIR}/runtime;ASAN_OPTIONS=detect_leaks=1;LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/lsan.supp:print_suppressions=0")
endfunction()

# arvo_bench(NAME [WIDGETS] [LINK target...]): one Google Benchmark program of every .cpp in the calling folder.
function(arvo_bench name)
  cmake_parse_arguments(ARG "WIDGETS" "" "LINK;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE arvo_flags Qt6::Core ${ARG_LINK} benchmark::benchmark)
  if(ARG_WIDGETS)
    target_link_libraries(${name} PRIVATE Qt6::Widgets)
  endif()
endfunction()

# Precompiled headers make a first build quicker; without them ccache serves every checkout on the machine from one cache.
function(arvo_precompile name widgets)
  if(NOT ARVO_PCH)
    return()
  endif()
  if(widgets)
    target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch_widgets.h)
  else()
    target_precompile_headers(${name} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/pch_core.h)
  endif()
endfunction()
