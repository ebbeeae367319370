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

find_package(ZLIB REQUIRED)
find_path(KITBAY_MINIZIP_INCLUDE_DIR minizip/unzip.h REQUIRED)
find_library(KITBAY_MINIZIP_LIBRARY minizip REQUIRED)
mark_as_advanced(KITBAY_MINIZIP_INCLUDE_DIR KITBAY_MINIZIP_LIBRARY)
add_library(Kitbay::minizip UNKNOWN IMPORTED)
set_target_properties(Kitbay::minizip PROPERTIES
  IMPORTED_LOCATION "${KITBAY_MINIZIP_LIBRARY}"
  INTERFACE_INCLUDE_DIRECTORIES "${KITBAY_MINIZIP_INCLUDE_DIR}"
  INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)

find_path(KITBAY_SODIUM_INCLUDE_DIR sodium.h REQUIRED)
find_library(KITBAY_SODIUM_LIBRARY sodium REQUIRED)
mark_as_advanced(KITBAY_SODIUM_INCLUDE_DIR KITBAY_SODIUM_LIBRARY)
add_library(Kitbay::sodium UNKNOWN IMPORTED)
set_target_properties(Kitbay::sodium PROPERTIES
  IMPORTED_LOCATION "${KITBAY_SODIUM_LIBRARY}"
  INTERFACE_INCLUDE_DIRECTORIES "${KITBAY_SODIUM_INCLUDE_DIR}")
if(WIN32)
  set_target_properties(Kitbay::sodium PROPERTIES INTERFACE_COMPILE_DEFINITIONS SODIUM_STATIC)
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
    find_path(KITBAY_GUMBO_INCLUDE_DIR gumbo.h REQUIRED)
    find_library(KITBAY_GUMBO_LIBRARY gumbo REQUIRED)
    mark_as_advanced(KITBAY_GUMBO_INCLUDE_DIR KITBAY_GUMBO_LIBRARY)
    add_library(Kitbay::gumbo UNKNOWN IMPORTED)
    set_target_properties(Kitbay::gumbo PROPERTIES
      IMPORTED_LOCATION "${KITBAY_GUMBO_LIBRARY}"
      INTERFACE_INCLUDE_DIRECTORIES "${KITBAY_GUMBO_INCLUDE_DIR}")
  endif()
endif()

if(KITBAY_BENCHMARKS)
  find_package(benchmark CONFIG REQUIRED)
endif()
