# One target per library, with the same name in every build:
#   Kitbay::pugixml, Kitbay::minizip,
#   Kitbay::sodium                     all builds
#   Kitbay::json                       Windows only: JSON for stand-ins and test programs
#   Kitbay::gumbo                      native only: the HTML parser for the tests' page
#   GTest::gtest, GTest::gmock_main …  where tests are built
#   benchmark::benchmark               where benchmarks are built
# tools/setup installs the native libraries, tools/build_windows_dependencies the others.

find_package(pugixml 1.11 CONFIG REQUIRED)
add_library(Kitbay::pugixml ALIAS pugixml::pugixml)

# Imports the library `name` as Kitbay::name. Further arguments are what it is linked with.
function(kitbay_import name header)
  string(TOUPPER KITBAY_${name} prefix)
  find_path(${prefix}_INCLUDE_DIR ${header} REQUIRED)
  find_library(${prefix}_LIBRARY ${name} REQUIRED)
  mark_as_advanced(${prefix}_INCLUDE_DIR ${prefix}_LIBRARY)
  add_library(Kitbay::${name} UNKNOWN IMPORTED)
  set_target_properties(Kitbay::${name} PROPERTIES
    IMPORTED_LOCATION "${${prefix}_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${${prefix}_INCLUDE_DIR}"
    INTERFACE_LINK_LIBRARIES "${ARGN}")
endfunction()

find_package(ZLIB REQUIRED)
kitbay_import(minizip minizip/unzip.h ZLIB::ZLIB)

kitbay_import(sodium sodium.h)
if(WIN32)
  target_compile_definitions(Kitbay::sodium INTERFACE SODIUM_STATIC)
endif()

# A header-only library, which Debian has for every machine. Its headers are linked here, because those of another
# system lie beside them.
if(WIN32)
  find_path(KITBAY_JSON_INCLUDE_DIR nlohmann/json.hpp REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  mark_as_advanced(KITBAY_JSON_INCLUDE_DIR)
  file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/json")
  file(CREATE_LINK "${KITBAY_JSON_INCLUDE_DIR}/nlohmann" "${PROJECT_BINARY_DIR}/json/nlohmann" SYMBOLIC)
  add_library(Kitbay::json INTERFACE IMPORTED)
  set_target_properties(Kitbay::json PROPERTIES
    INTERFACE_INCLUDE_DIRECTORIES "${PROJECT_BINARY_DIR}/json")
endif()

if(KITBAY_TESTS OR KITBAY_FUZZERS)
  find_package(GTest 1.12 CONFIG REQUIRED)
  if(NOT WIN32)
    kitbay_import(gumbo gumbo.h)
  endif()
endif()

if(KITBAY_BENCHMARKS)
  find_package(benchmark CONFIG REQUIRED)
endif()
