# kitbay_library(name SOURCES ... HEADERS ... DEPENDS ...)
# One static library per folder of src/. Headers are included as "folder/file.h". The target
# all_verify_interface_header_sets compiles each of them alone.
function(kitbay_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS;DEPENDS")
  if(arg_SOURCES)
    add_library(${name} STATIC ${arg_SOURCES})
    set(scope PUBLIC)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_sources(${name} ${scope} FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
    FILES ${arg_HEADERS})
  target_include_directories(${name} ${scope} ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} ${scope} ${arg_DEPENDS})
  # Each library is checked once: the portable ones natively.
  if(arg_SOURCES AND KITBAY_CLANG_TIDY AND (NOT WIN32 OR name MATCHES "^kitbay_win32"))
    check_with_clang_tidy(${name})
  endif()
endfunction()
