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

# kortavin_room(name SOURCES ... [PUBLIC ...] [LIBRARIES ...]): one folder of the library. PUBLIC names the headers
# that are for hosts; every other one is this project's own.
function(kortavin_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;PUBLIC;LIBRARIES" ${ARGN})
  add_library(kortavin_${name} OBJECT ${ROOM_SOURCES})
  target_link_libraries(kortavin_${name} PRIVATE kortavin_options ${ROOM_LIBRARIES})
  target_compile_definitions(kortavin_${name} PRIVATE KORTAVIN_NO_GLOBAL_NAMES)
  list(TRANSFORM ROOM_PUBLIC PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
  set_property(GLOBAL APPEND PROPERTY KORTAVIN_ROOMS ${name})
  set_property(GLOBAL APPEND PROPERTY KORTAVIN_ROOM_LIBRARIES ${ROOM_LIBRARIES})
  set_property(GLOBAL APPEND PROPERTY KORTAVIN_PUBLIC_HEADERS ${ROOM_PUBLIC})
endfunction()

# kortavin_exports(library): only what is the library's own leaves it, and no instance of a template of std.
function(kortavin_exports library)
  set(script ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(${library} PRIVATE -Wl,--version-script=${script})
  set_property(TARGET ${library} APPEND PROPERTY LINK_DEPENDS ${script})
  set_target_properties(${library} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
  if(NOT KORTAVIN_SANITIZE)  # whose runtime comes with the program
    target_link_options(${library} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

# The library made of all rooms declared so far, with its headers, package config and pkg-config file: `kortavin`, which
# is shared and which hosts link, and `kortavin_inside`, its objects, for tests of what no host may reach.
function(kortavin_library)
  get_property(rooms GLOBAL PROPERTY KORTAVIN_ROOMS)
  get_property(libraries GLOBAL PROPERTY KORTAVIN_ROOM_LIBRARIES)
  get_property(headers GLOBAL PROPERTY KORTAVIN_PUBLIC_HEADERS)
  list(REMOVE_DUPLICATES libraries)
  list(TRANSFORM rooms REPLACE "(.+)" "$<TARGET_OBJECTS:kortavin_\\1>" OUTPUT_VARIABLE objects)

  add_library(kortavin SHARED ${objects})
  target_sources(kortavin PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR} FILES ${headers})
  target_link_libraries(kortavin PRIVATE kortavin_options ${libraries})
  target_compile_features(kortavin INTERFACE cxx_std_20)
  # One folder is enough for hosts. It serves a host's own build of this project as well.
  target_include_directories(kortavin INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  set_target_properties(kortavin PROPERTIES LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR})
  kortavin_exports(kortavin)

  add_library(kortavin_inside INTERFACE)
  target_sources(kortavin_inside INTERFACE ${objects})
  target_link_libraries(kortavin_inside INTERFACE ${libraries})

  install(TARGETS kortavin EXPORT kortavin-targets FILE_SET HEADERS)
  install(EXPORT kortavin-targets NAMESPACE kortavin:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/kortavin
          FILE kortavin-config.cmake)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/kortavin-config-version.cmake COMPATIBILITY SameMajorVersion)
  file(RELATIVE_PATH KORTAVIN_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
  configure_file(${PROJECT_SOURCE_DIR}/cmake/kortavin.pc.in ${PROJECT_BINARY_DIR}/kortavin.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/kortavin-config-version.cmake
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/kortavin)
  install(FILES ${PROJECT_BINARY_DIR}/kortavin.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

# kortavin_test(name SOURCES ... [LIBRARIES ...] [OWN_MAIN] [AS_HOST]): one test program. As a host it links the shared
# library, else what that is made of.
function(kortavin_test name)
  cmake_parse_arguments(TEST "OWN_MAIN;AS_HOST" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name}_tests ${TEST_SOURCES})
  target_link_libraries(${name}_tests PRIVATE $<IF:$<BOOL:${TEST_AS_HOST}>,kortavin,kortavin_inside> kortavin_options
                                              ${TEST_LIBRARIES}
                                              $<IF:$<BOOL:${TEST_OWN_MAIN}>,GTest::gmock,GTest::gmock_main>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 sees overflows in joined strings that are not there.
    target_compile_options(${name}_tests PRIVATE -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow)
  endif()
  target_precompile_headers(${name}_tests PRIVATE <gmock/gmock.h> <gtest/gtest.h> <string> <vector>)
  gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 120)
endfunction()
