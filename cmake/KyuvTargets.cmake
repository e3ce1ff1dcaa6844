# How targets of this project are made: one library per directory under Source/Common/Libs,
# one test program per library, one benchmark program per subsystem.

# ccache, where it is installed, makes a second build cheap.
find_program(KYUV_CCACHE ccache)
if(KYUV_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${KYUV_CCACHE}")
endif()

# Warnings are errors in our own code, and only there: this target is never exported.
add_library(kyuv_own_code INTERFACE)
target_compile_options(kyuv_own_code INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in text + std::string where there are none (its bug 105651).
  target_compile_options(kyuv_own_code INTERFACE -Wno-restrict)
endif()
# A fused multiply-add rounds once where two operations round twice. Off, so that a result has the
# same bits from every compiler.
target_compile_options(kyuv_own_code INTERFACE -ffp-contract=off)
if(KYUV_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                      -fno-omit-frame-pointer -O1 -g1)
  add_link_options(-fsanitize=address,undefined)
endif()

# kyuv_add_library(target SOURCES a.cpp ... HEADERS a.h ... PUBLIC_DEPS t ... PRIVATE_DEPS t ...)
#
# A static library of the current directory with the alias kyUVUtils::target. Headers are included
# by their path below Source/Common/Libs, and are installed under the same path; HEADERS lists the
# public ones only.
function(kyuv_add_library target)
  cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;PUBLIC_DEPS;PRIVATE_DEPS" ${ARGN})
  add_library(${target} STATIC ${ARG_SOURCES})
  add_library(kyUVUtils::${target} ALIAS ${target})
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_sources(${target} PUBLIC FILE_SET HEADERS
    BASE_DIRS "${KYUV_LIBS_DIR}" FILES ${ARG_HEADERS})
  target_link_libraries(${target} PUBLIC ${ARG_PUBLIC_DEPS}
                                  PRIVATE $<BUILD_INTERFACE:kyuv_own_code> ${ARG_PRIVATE_DEPS})
  install(TARGETS ${target} EXPORT kyUVUtilsTargets
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/kyUVUtils")
endfunction()

# Programs that are worth building optimised; the other tests run with sanitizers.
add_custom_target(kyuv_mesh_tests)
add_custom_target(kyuv_benchmarks)

# kyuv_add_test(target SOURCES a.cpp ... DEPS t ... [LABELS l ...])
#
# A GoogleTest program; every TEST in it becomes a test of CTest. The label Meshes is for tests on
# large meshes, which kyuv_mesh_tests builds all of; they are too slow for sanitizers, and a build
# with these has none of them.
function(kyuv_add_test target)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;LABELS" ${ARGN})
  add_executable(${target} ${ARG_SOURCES})
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/Tests")
  target_compile_definitions(${target} PRIVATE KYUV_MESHES="${KYUV_MESHES}")
  target_link_libraries(${target} PRIVATE kyuv_own_code ${ARG_DEPS}
    GTest::gmock GTest::gtest GTest::gtest_main rapidcheck)
  set(properties TIMEOUT 600)
  if(ARG_LABELS)
    list(APPEND properties LABELS "${ARG_LABELS}")
  endif()
  if("Meshes" IN_LIST ARG_LABELS)
    add_dependencies(kyuv_mesh_tests ${target})
    if(KYUV_SANITIZE)
      set_target_properties(${target} PROPERTIES EXCLUDE_FROM_ALL ON)
      return()
    endif()
  endif()
  gtest_discover_tests(${target} DISCOVERY_MODE PRE_TEST PROPERTIES ${properties})
endfunction()

# kyuv_add_benchmark(target SOURCES a.cpp ... DEPS t ...)
#
# Built by kyuv_benchmarks only.
function(kyuv_add_benchmark target)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  add_executable(${target} EXCLUDE_FROM_ALL ${ARG_SOURCES})
  add_dependencies(kyuv_benchmarks ${target})
  target_compile_definitions(${target} PRIVATE KYUV_MESHES="${KYUV_MESHES}")
  target_link_libraries(${target} PRIVATE kyuv_own_code ${ARG_DEPS} benchmark::benchmark)
endfunction()
