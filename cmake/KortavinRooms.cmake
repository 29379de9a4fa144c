# What every target is built with, and the functions that folders use to declare themselves.

add_library(kortavin_options INTERFACE)
target_compile_features(kortavin_options INTERFACE cxx_std_20)
target_include_directories(kortavin_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(kortavin_options INTERFACE -Wall -Wextra -Wpedantic $<$<BOOL:${KORTAVIN_WERROR}>:-Werror>)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kortavin_options INTERFACE -fpch-preprocess)  # what ccache needs with a precompiled header
endif()
if(KORTAVIN_SANITIZE)
  target_compile_options(kortavin_options INTERFACE -fsanitize=${KORTAVIN_SANITIZE} -fno-omit-frame-pointer
                                                    -fno-sanitize-recover=all)
  target_link_options(kortavin_options INTERFACE -fsanitize=${KORTAVIN_SANITIZE})
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set_property(GLOBAL PROPERTY KORTAVIN_ROOMS "")

# kortavin_room(name SOURCES ... [LIBRARIES ...]): one folder of the library.
function(kortavin_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_library(kortavin_${name} OBJECT ${ROOM_SOURCES})
  target_link_libraries(kortavin_${name} PRIVATE kortavin_options ${ROOM_LIBRARIES})
  set_property(GLOBAL APPEND PROPERTY KORTAVIN_ROOMS ${name})
  set_property(GLOBAL APPEND PROPERTY KORTAVIN_ROOM_LIBRARIES ${ROOM_LIBRARIES})
endfunction()

# The shared library made of all rooms declared so far, with its headers, package config and pkg-config file.
function(kortavin_library)
  get_property(rooms GLOBAL PROPERTY KORTAVIN_ROOMS)
  get_property(libraries GLOBAL PROPERTY KORTAVIN_ROOM_LIBRARIES)
  list(REMOVE_DUPLICATES libraries)
  add_library(kortavin SHARED)
  foreach(room IN LISTS rooms)
    target_sources(kortavin PRIVATE $<TARGET_OBJECTS:kortavin_${room}>)
  endforeach()
  target_link_libraries(kortavin PRIVATE kortavin_options ${libraries})
  if(NOT KORTAVIN_SANITIZE)  # whose runtime comes with the program
    target_link_options(kortavin PRIVATE -Wl,--no-undefined)
  endif()
  target_compile_features(kortavin INTERFACE cxx_std_20)
  target_include_directories(kortavin INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                                                $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
                                                $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kortavin>)
  set_target_properties(kortavin PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})

  install(TARGETS kortavin EXPORT kortavin-targets)
  install(DIRECTORY framework query db service resources symbology grid wizard textimport DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kortavin
          FILES_MATCHING PATTERN "*.h"
          PATTERN framework/qt EXCLUDE
          REGEX "/(charsetdetection|diagnostics|file_stream|gb18030|handles|icu|piecereader|secrets|seek|system|textrow|drawtext|fontcache|strokes|windowclass|picker|sharedfont|darkness|partition|heading)\\.h$" EXCLUDE)
  install(EXPORT kortavin-targets NAMESPACE kortavin:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/kortavin
          FILE kortavin-config.cmake)
  write_basic_package_version_file(kortavin-config-version.cmake COMPATIBILITY SameMajorVersion)
  file(RELATIVE_PATH KORTAVIN_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  configure_file(cmake/kortavin.pc.in kortavin.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/kortavin-config-version.cmake
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/kortavin)
  install(FILES ${PROJECT_BINARY_DIR}/kortavin.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# kortavin_test(name SOURCES ... [LIBRARIES ...] [OWN_MAIN]): one test program.
function(kortavin_test name)
  cmake_parse_arguments(TEST "OWN_MAIN" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name}_tests ${TEST_SOURCES})
  target_link_libraries(${name}_tests PRIVATE kortavin kortavin_options ${TEST_LIBRARIES}
                                              $<IF:$<BOOL:${TEST_OWN_MAIN}>,GTest::gmock,GTest::gmock_main>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees overflows in joined strings that are not there.
    target_compile_options(${name}_tests PRIVATE -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
  endif()
  target_precompile_headers(${name}_tests PRIVATE <gmock/gmock.h> <gtest/gtest.h> <string> <vector>)
  gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 120)
endfunction()
