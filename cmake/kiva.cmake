# The settings that every target of our own shares; generated parsers get them without the warnings.
add_library(kiva_settings INTERFACE)
target_compile_features(kiva_settings INTERFACE cxx_std_20)
target_include_directories(kiva_settings INTERFACE $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
                           $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/kiva>)
add_library(kiva_warnings INTERFACE)
# GCC 12 sees overlaps in additions of strings that cannot be (its bug 105651).
target_compile_options(kiva_warnings INTERFACE -Wall -Wextra $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> $<$<BOOL:${KIVA_WERROR}>:-Werror>)

# kiva_floor(NAME [STATIC] FOLDERS FOLDER... [USES TARGET...]): a library of all sources in the folders,
# known to others as kiva::NAME without its "kiva_". STATIC is for what the programs alone need.
function(kiva_floor name)
  cmake_parse_arguments(FLOOR "STATIC" "" "FOLDERS;USES" ${ARGN})
  set(sources)
  foreach(folder ${FLOOR_FOLDERS})
    file(GLOB found CONFIGURE_DEPENDS ${folder}/*.cc ${folder}/*.h)
    list(APPEND sources ${found})
  endforeach()
  if(NOT sources)
    message(FATAL_ERROR "floor ${name} has no sources")
  endif()
  set(kind)
  if(FLOOR_STATIC)
    set(kind STATIC)
  endif()
  add_library(${name} ${kind} ${sources})
  target_link_libraries(${name} PUBLIC kiva_settings ${FLOOR_USES}
                        PRIVATE $<BUILD_INTERFACE:kiva_warnings>)
  string(REGEX REPLACE "^kiva_" "" short ${name})
  add_library(kiva::${short} ALIAS ${name})
  set_target_properties(${name} PROPERTIES EXPORT_NAME ${short} VERSION ${PROJECT_VERSION}
                        SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
endfunction()

# kiva_archive(NAME LIBRARY): a library of others that no header of the floor shows. A shared floor takes an
# archive in whole and keeps its names; who links a static one finds the library by its name.
function(kiva_archive name library)
  get_filename_component(short ${library} NAME_WE)
  string(REGEX REPLACE "^lib" "" short ${short})
  target_link_libraries(${name} PRIVATE $<BUILD_INTERFACE:${library}> $<INSTALL_INTERFACE:${short}>)
  if(BUILD_SHARED_LIBS AND library MATCHES "\\.a$")
    get_filename_component(file ${library} NAME)
    target_link_options(${name} PRIVATE LINKER:--exclude-libs,${file})
  endif()
endfunction()

# kiva_tests(NAME [USES TARGET...]): one test program of all *_test.cc in tests/NAME. Suites whose
# names end in "Tools" need programs of others, and bear the label "backends".
function(kiva_tests name)
  cmake_parse_arguments(TESTS "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tests/${name}/*.cc)
  if(NOT sources)
    return()
  endif()
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE kiva_test_support ${TESTS_USES} kiva_warnings)
  gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST TEST_PREFIX ${name}.
                       TEST_FILTER "-*Tools.*" PROPERTIES TIMEOUT 900)
  if(name STREQUAL targets)
    gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST TEST_PREFIX ${name}.
                         TEST_FILTER "*Tools.*" TEST_LIST ${name}_tools
                         PROPERTIES TIMEOUT 900 LABELS backends)
  endif()
endfunction()
