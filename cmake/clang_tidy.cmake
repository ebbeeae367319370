# check_with_clang_tidy(target)
# Adds the target's sources to what the target "clang_tidy" checks, with the target's include folders
# and neither the sanitizers nor any other option of the compiler. They are checked as one unit, which
# takes a third of the time of checking each alone: most of it goes into the library's headers. A clean
# run leaves a stamp, and the sources are not checked again until one of them, a header of theirs or
# .clang-tidy changes.
function(check_with_clang_tidy target)
  find_program(KITBAY_CLANG_TIDY_PROGRAM clang-tidy-19 REQUIRED)
  mark_as_advanced(KITBAY_CLANG_TIDY_PROGRAM)
  if(NOT TARGET clang_tidy)
    add_custom_target(clang_tidy)
  endif()

  get_target_property(sources ${target} SOURCES)
  set(includes "")
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source NORMALIZE)
    string(APPEND includes "#include \"${source}\"\n")
  endforeach()
  # The analyzer follows paths through included sources only below a file of this name.
  set(unit "${CMAKE_CURRENT_BINARY_DIR}/clang_tidy/${target}/UnifiedSource.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "${includes}" @ONLY)

  set(stamp "${unit}.stamp")
  set(standard -std=c++${CMAKE_CXX_STANDARD})
  set(folders "-I$<JOIN:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>,;-I>")
  add_custom_command(OUTPUT "${stamp}"
    COMMAND ${CMAKE_CXX_COMPILER} ${standard} "${folders}" -MM -MT "${stamp}" -MF "${stamp}.d" "${unit}"
    COMMAND ${KITBAY_CLANG_TIDY_PROGRAM} --quiet "--config-file=${PROJECT_SOURCE_DIR}/.clang-tidy"
      --checks=-bugprone-suspicious-include "${unit}" -- ${standard} "${folders}"
    COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
    DEPENDS "${unit}" "${PROJECT_SOURCE_DIR}/.clang-tidy" "${KITBAY_CLANG_TIDY_PROGRAM}"
    DEPFILE "${stamp}.d"
    COMMENT "Checking ${target} with clang-tidy"
    COMMAND_EXPAND_LISTS VERBATIM)
  add_custom_target(clang_tidy_${target} DEPENDS "${stamp}")
  add_dependencies(clang_tidy clang_tidy_${target})
endfunction()
