# Build helpers shared by every folder of the project.

macro(tachyrun_setup_flags)
  add_compile_options(-Wall -Wextra)
  if(TACHYRUN_SANITIZE)
    add_compile_options(-fsanitize=${TACHYRUN_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${TACHYRUN_SANITIZE})
  endif()
  if(TACHYRUN_BUILD_FUZZ)
    # Coverage feedback from the libraries too, not only from the fuzz drivers.
    add_compile_options(-fsanitize=fuzzer-no-link)
  endif()
endmacro()

# tachyrun_add_library(NAME SOURCES ... [DEPS ...] [PRIVATE_DEPS ...])
# A static library of one subsystem; include paths are rooted at the
# repository root ("core/DataLock.h").
function(tachyrun_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;PRIVATE_DEPS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  target_link_libraries(${name} PUBLIC ${ARG_DEPS} PRIVATE ${ARG_PRIVATE_DEPS})
endfunction()

# tachyrun_add_test(NAME SOURCES ... LIBS ... [LABEL unit|concurrency] [TIMEOUT s] [ENV NAME=VALUE])
# One GoogleTest executable; its tests are registered one by one with ctest.
# Every test runs in the plain and ASan builds; the ThreadSanitizer build runs
# the executables labelled "concurrency".
function(tachyrun_add_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT;LABEL;ENV" "SOURCES;LIBS" ${ARGN})
  if(NOT ARG_LABEL)
    set(ARG_LABEL unit)
  endif()
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  if(TACHYRUN_TEST_LABELS AND NOT ARG_LABEL IN_LIST TACHYRUN_TEST_LABELS)
    return()
  endif()
  set(props LABELS ${ARG_LABEL} TIMEOUT ${ARG_TIMEOUT})
  if(ARG_ENV)
    list(APPEND props ENVIRONMENT ${ARG_ENV})
  endif()
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES ${props})
endfunction()

# tachyrun_add_fuzzer(NAME SOURCES ... LIBS ...): a libFuzzer target (clang).
function(tachyrun_add_fuzzer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  set_property(GLOBAL APPEND PROPERTY TACHYRUN_FUZZERS ${name})
endfunction()

# tachyrun_add_bench(NAME SOURCES ... LIBS ...): a Google Benchmark program.
function(tachyrun_add_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  find_package(benchmark REQUIRED)
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} benchmark::benchmark)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
endfunction()

# tachyrun_add_subfolders(FOLDER ...): adds the named child folders in the
# order given. tests/, bench/ and fuzz/ list theirs explicitly, so a folder
# that is missing or misspelt fails the configure instead of going unbuilt.
function(tachyrun_add_subfolders)
  foreach(child IN LISTS ARGN)
    add_subdirectory(${child})
  endforeach()
endfunction()
