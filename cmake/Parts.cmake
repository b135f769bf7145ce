# The parts beside the library, and what each needs.

# maintenance_model_part(NAME TITLE DEFAULT AUTO|OFF [NEEDS WHAT=VARIABLE...])
#
# A part is chosen by the cache variable MAINTENANCE_MODEL_NAME: AUTO builds it where all that it needs is
# there and otherwise tells what is not, ON stops without that. WHAT is a package by Debian's name, and
# VARIABLE is true where it was found. Sets build_NAME.
function(maintenance_model_part name title)
  cmake_parse_arguments(PARSE_ARGV 2 PART "" "DEFAULT" "NEEDS")
  set(choice MAINTENANCE_MODEL_${name})
  set(${choice} ${PART_DEFAULT} CACHE STRING "Build ${title}: AUTO, ON or OFF")
  set_property(CACHE ${choice} PROPERTY STRINGS AUTO ON OFF)
  set(missing "")
  foreach(need IN LISTS PART_NEEDS)
    string(REGEX MATCH "^(.+)=(.+)$" matched ${need})
    if(NOT ${CMAKE_MATCH_2})
      list(APPEND missing ${CMAKE_MATCH_1})
    endif()
  endforeach()
  list(JOIN missing ", " missing)
  set(build_${name} OFF PARENT_SCOPE)
  if(${choice} AND NOT missing)
    set(build_${name} ON PARENT_SCOPE)
  elseif(${choice} STREQUAL "AUTO")
    message(STATUS "Without ${title}, for want of: ${missing}")
  elseif(${choice})
    message(FATAL_ERROR "${choice} is ON, but for ${title} there is no: ${missing}")
  endif()
endfunction()

find_package(GTest QUIET) # which may come without the mocks
set(gmock_found OFF)
if(TARGET GTest::gmock)
  set(gmock_found ON)
endif()
find_package(CLI11 QUIET)
find_package(nlohmann_json QUIET)
find_path(MAINTENANCE_MODEL_ASIO_INCLUDE asio.hpp)
find_path(MAINTENANCE_MODEL_EDIT_INCLUDE histedit.h)
find_library(MAINTENANCE_MODEL_EDIT_LIBRARY edit)
find_program(MAINTENANCE_MODEL_SCDOC scdoc)
mark_as_advanced(MAINTENANCE_MODEL_ASIO_INCLUDE MAINTENANCE_MODEL_EDIT_INCLUDE
                 MAINTENANCE_MODEL_EDIT_LIBRARY MAINTENANCE_MODEL_SCDOC)

# Where this is a part of another project, the library alone unless told otherwise.
set(by_default OFF)
if(PROJECT_IS_TOP_LEVEL)
  set(by_default AUTO)
endif()

maintenance_model_part(SIMULATION "the simulation of links" DEFAULT AUTO)
maintenance_model_part(
  TOOLS "maintctl" DEFAULT ${by_default}
  NEEDS libcli11-dev=CLI11_FOUND nlohmann-json3-dev=nlohmann_json_FOUND
        libasio-dev=MAINTENANCE_MODEL_ASIO_INCLUDE libedit-dev=MAINTENANCE_MODEL_EDIT_INCLUDE
        libedit-dev=MAINTENANCE_MODEL_EDIT_LIBRARY)
maintenance_model_part(MANUAL "maintctl's manual page" DEFAULT ${by_default}
                       NEEDS scdoc=MAINTENANCE_MODEL_SCDOC)
maintenance_model_part(EXAMPLES "the examples" DEFAULT ${by_default} NEEDS libcli11-dev=CLI11_FOUND)
maintenance_model_part(TESTS "the tests" DEFAULT ${by_default}
                       NEEDS libgmock-dev=gmock_found "shared library=BUILD_SHARED_LIBS")
if(MAINTENANCE_MODEL_FUZZ)
  include(CheckCXXSourceCompiles)
  set(CMAKE_REQUIRED_FLAGS -fsanitize=fuzzer)
  check_cxx_source_compiles(
    "extern \"C\" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }"
    MAINTENANCE_MODEL_LIBFUZZER)
  unset(CMAKE_REQUIRED_FLAGS)
endif()
maintenance_model_part(FUZZ "the fuzz harnesses" DEFAULT OFF
                       NEEDS "clang-14 with libclang-rt-14-dev=MAINTENANCE_MODEL_LIBFUZZER")
if(MAINTENANCE_MODEL_BENCH)
  find_package(benchmark QUIET)
endif()
maintenance_model_part(BENCH "the benchmarks" DEFAULT OFF NEEDS libbenchmark-dev=benchmark_FOUND)
