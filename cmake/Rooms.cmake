# A building is a folder of floors, named from the ground up; each floor is a library that may use the floors below it.

# Headers of the standard library that most rooms include, compiled once. A room still includes what it uses.
function(wr_precompile target)
  if(WR_PRECOMPILE)
    if(NOT TARGET wr_precompiled)
      file(WRITE ${PROJECT_BINARY_DIR}/precompiled.cpp "")
      add_library(wr_precompiled STATIC ${PROJECT_BINARY_DIR}/precompiled.cpp)
      target_link_libraries(wr_precompiled PRIVATE wr_options)
      target_precompile_headers(wr_precompiled PRIVATE <algorithm> <array> <functional> <map> <memory> <mutex> <optional>
        <span> <string> <string_view> <vector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM wr_precompiled)
  endif()
endfunction()

# wr_building(MacToolbox FLOORS Base Data ... USES libraries)
function(wr_building name)
  cmake_parse_arguments(ARG "" "" "FLOORS;USES" ${ARGN})
  set(below ${ARG_USES})
  foreach(floor IN LISTS ARG_FLOORS)
    wr_floor(${name} ${floor} USES ${below})
    list(APPEND below ${name}.${floor})
  endforeach()
  add_library(${name} INTERFACE)
  target_link_libraries(${name} INTERFACE ${below})
endfunction()

# One floor: every source of the folder, compiled once.
function(wr_floor building floor)
  cmake_parse_arguments(ARG "" "" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${building}/${floor}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$") # a program's, not the library's
  if(sources)
    add_library(${building}.${floor} STATIC ${sources})
    target_link_libraries(${building}.${floor} PUBLIC wr_options ${ARG_USES})
    wr_precompile(${building}.${floor})
  else()
    add_library(${building}.${floor} INTERFACE)
    target_link_libraries(${building}.${floor} INTERFACE wr_options ${ARG_USES})
  endif()
endfunction()

# The same for tests, which all include GoogleTest.
function(wr_precompile_tests target)
  if(WR_PRECOMPILE)
    if(NOT TARGET wr_precompiled_tests)
      file(WRITE ${PROJECT_BINARY_DIR}/precompiled_tests.cpp "int main() {}\n")
      add_executable(wr_precompiled_tests ${PROJECT_BINARY_DIR}/precompiled_tests.cpp) # flags of an executable, as the tests
      target_link_libraries(wr_precompiled_tests PRIVATE wr_options GTest::gtest)
      target_precompile_headers(wr_precompiled_tests PRIVATE <gtest/gtest.h> <algorithm> <array> <fstream> <functional> <map>
        <memory> <mutex> <optional> <span> <string> <string_view> <vector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM wr_precompiled_tests)
  endif()
endfunction()

# The tests of one folder under Tests/: wr_tests(QuickDraw USES MacToolbox.QuickDraw [LABEL threads]). Without a label the
# folder's name is the label: a second one would be lost, and the properties behind it, where the tests are discovered.
function(wr_tests folder)
  cmake_parse_arguments(ARG "" "LABEL" "USES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Tests/${folder}/*.cpp)
  if(NOT sources)
    return()
  endif()
  add_executable(test_${folder} ${sources})
  target_link_libraries(test_${folder} PRIVATE ${ARG_USES} GTest::gtest_main)
  wr_precompile_tests(test_${folder})
  set(label ${folder})
  if(ARG_LABEL)
    set(label ${ARG_LABEL})
  endif()
  gtest_discover_tests(test_${folder} DISCOVERY_MODE PRE_TEST
    TEST_PREFIX ${folder}. WORKING_DIRECTORY ${PROJECT_BINARY_DIR}
    PROPERTIES LABELS ${label} TIMEOUT 600
    ENVIRONMENT "TSAN_OPTIONS=halt_on_error=1") # also in processes that a test starts, which end without a summary
endfunction()

# A fuzz target and its seed corpus: wr_fuzz(ResourceFile USES MacToolbox.Data). Under clang it is a libFuzzer program;
# everywhere it is also a plain test that runs the corpus once.
function(wr_fuzz name)
  cmake_parse_arguments(ARG "" "" "USES" ${ARGN})
  set(source ${PROJECT_SOURCE_DIR}/Tests/Fuzz/${name}Fuzz.cpp)
  add_executable(fuzz_${name} ${source})
  target_link_libraries(fuzz_${name} PRIVATE ${ARG_USES})
  if(WR_FUZZ)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(fuzz_${name} PRIVATE ${PROJECT_SOURCE_DIR}/Tests/Fuzz/RunCorpus.cpp)
  endif()
  add_test(NAME Fuzz.${name} COMMAND fuzz_${name} ${PROJECT_SOURCE_DIR}/Tests/Fuzz/Corpus/${name})
  if(WR_FUZZ)
    set_tests_properties(Fuzz.${name} PROPERTIES DISABLED TRUE) # libFuzzer would write into the corpus
  endif()
  set_tests_properties(Fuzz.${name} PROPERTIES LABELS fuzz TIMEOUT 600)
endfunction()
