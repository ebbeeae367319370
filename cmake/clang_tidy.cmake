# The system's interfaces require what these checks object to: handles that are numbers, names of pointer
# types, arrays, functions looked up by name, and interfaces outside any namespace. Callbacks must not let
# exceptions pass, and a window's controls exist as long as the window. The analyzer assumes that an object
# which a message carries may be null.
set(KITBAY_CHECKS_NOT_FOR_WINDOWS
  -performance-no-int-to-ptr -misc-misplaced-const -modernize-avoid-c-arrays
  -bugprone-casting-through-void -bugprone-multi-level-implicit-pointer-conversion
  -bugprone-suspicious-stringview-data-usage -bugprone-empty-catch -bugprone-unchecked-optional-access
  -bugprone-forward-declaration-namespace -clang-analyzer-core.CallAndMessage)

# check_with_clang_tidy(target)
# Makes the target "clang_tidy" check the target's sources too, with the target's include folders but without
# the sanitizers or any other compiler option. They are checked as one unit, which takes a third of the time
# of checking each file alone, because most of it goes into the library's headers. A clean run leaves a
# stamp; the sources are not checked again until one of them, one of their headers or .clang-tidy changes.
# The analyzer gives a function up after a third of its usual steps: beyond them it takes twice the time.
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
    if(NOT source MATCHES "[.]cpp$")
      continue()
    endif()
    string(APPEND includes "#include \"${source}\"\n")
  endforeach()
  # The analyzer follows paths through included sources only below a file of this name.
  set(unit "${CMAKE_CURRENT_BINARY_DIR}/clang_tidy/${target}/UnifiedSource.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "${includes}" @ONLY)

  set(stamp "${unit}.stamp")
  set(standard -std=c++${CMAKE_CXX_STANDARD})
  set(checks -bugprone-suspicious-include)
  set(definitions "")
  set(system "")
  if(WIN32)
    list(APPEND checks ${KITBAY_CHECKS_NOT_FOR_WINDOWS})
    set(definitions "-D$<JOIN:$<TARGET_PROPERTY:${target},COMPILE_DEFINITIONS>,;-D>")
    # The cross compiler's headers, except those that every compiler brings itself.
    list(APPEND system "--target=${KITBAY_TRIPLET}")
    foreach(folder IN LISTS CMAKE_CXX_IMPLICIT_INCLUDE_DIRECTORIES)
      if(NOT folder MATCHES "/lib/gcc/.*/include(-fixed)?$")
        list(APPEND system -isystem "${folder}")
      endif()
    endforeach()
  endif()
  list(JOIN checks "," checks)
  set(folders "-I$<JOIN:$<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>,;-I>")
  add_custom_command(OUTPUT "${stamp}"
    COMMAND ${CMAKE_CXX_COMPILER} ${standard} "${definitions}" "${folders}" -MM -MT "${stamp}" -MF "${stamp}.d" "${unit}"
    COMMAND ${KITBAY_CLANG_TIDY_PROGRAM} --quiet "--config-file=${PROJECT_SOURCE_DIR}/.clang-tidy"
      "--header-filter=^${PROJECT_SOURCE_DIR}/(src|suite)/" "--checks=${checks}" "${unit}" --
      ${standard} "${definitions}" "${folders}" ${system} -Xclang -analyzer-config -Xclang max-nodes=75000
    COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
    DEPENDS "${unit}" "${PROJECT_SOURCE_DIR}/.clang-tidy" "${KITBAY_CLANG_TIDY_PROGRAM}"
    DEPFILE "${stamp}.d"
    COMMENT "Checking ${target} with clang-tidy"
    COMMAND_EXPAND_LISTS VERBATIM)
  add_custom_target(clang_tidy_${target} DEPENDS "${stamp}")
  # The check needs the target's generated files.
  if(WIN32)
    add_dependencies(clang_tidy_${target} ${target})
  endif()
  add_dependencies(clang_tidy clang_tidy_${target})
endfunction()
