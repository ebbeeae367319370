# add_test_program(name [SHARDS number])
# Adds one CTest entry for a GoogleTest program, or several that share its tests. A process per test would
# take longer to start than most tests run.
function(add_test_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "SHARDS" "")
  if(NOT arg_SHARDS)
    add_test(NAME ${name} COMMAND ${name})
    return()
  endif()
  math(EXPR last "${arg_SHARDS} - 1")
  foreach(index RANGE ${last})
    math(EXPR number "${index} + 1")
    set(shard "${name}.${number}_of_${arg_SHARDS}")
    add_test(NAME ${shard} COMMAND ${name})
    set_tests_properties(${shard} PROPERTIES
      ENVIRONMENT "GTEST_TOTAL_SHARDS=${arg_SHARDS};GTEST_SHARD_INDEX=${index}")
  endforeach()
endfunction()
