# component_clsid(RESULT PROGID): the class identifier of a component, always the same for a ProgID.
function(component_clsid result progid)
  string(UUID uuid NAMESPACE 4c0c9b0e-6a39-4f52-8d5c-6b3c0a1f7e21 NAME "${progid}" TYPE SHA1 UPPER)
  set(${result} "{${uuid}}" PARENT_SCOPE)
endfunction()

# The code that all component libraries share is compiled once.
add_library(component_server OBJECT "${CMAKE_CURRENT_LIST_DIR}/component_server.cpp")
set(KITBAY_COMPONENT_SOURCES "${CMAKE_CURRENT_LIST_DIR}" CACHE INTERNAL "")

# add_component_library(FILE file.dll OUTPUT_FOLDER folder VERSION a.b.c.d|none PROGID progid
#                       NAME text [TARGET target])
# A component library that registers PROGID below HKEY_CLASSES_ROOT and carries VERSION in its version
# resource. TARGET distinguishes two versions of one file; it is the file's name without extension by
# default.
function(add_component_library)
  cmake_parse_arguments(PARSE_ARGV 0 arg "" "FILE;OUTPUT_FOLDER;VERSION;PROGID;NAME;TARGET" "")
  get_filename_component(base "${arg_FILE}" NAME_WLE)
  if(NOT arg_TARGET)
    set(arg_TARGET ${base})
  endif()
  component_clsid(clsid ${arg_PROGID})
  set(generated "${CMAKE_CURRENT_BINARY_DIR}/generated/${arg_TARGET}")
  configure_file("${KITBAY_COMPONENT_SOURCES}/identity.cpp.in" "${generated}/identity.cpp" @ONLY)
  set(sources "${generated}/identity.cpp" "${KITBAY_COMPONENT_SOURCES}/component.def"
    $<TARGET_OBJECTS:component_server>)
  if(NOT arg_VERSION STREQUAL "none")
    string(REPLACE "." "," version_numbers "${arg_VERSION}")
    configure_file("${KITBAY_COMPONENT_SOURCES}/version.rc.in" "${generated}/version.rc" @ONLY)
    list(APPEND sources "${generated}/version.rc")
  endif()
  add_library(${arg_TARGET} MODULE ${sources})
  target_include_directories(${arg_TARGET} PRIVATE "${KITBAY_COMPONENT_SOURCES}")
  target_link_libraries(${arg_TARGET} PRIVATE ole32 advapi32)
  # The 32-bit entry points are exported without their argument sizes.
  target_link_options(${arg_TARGET} PRIVATE -s -Wl,--enable-stdcall-fixup)
  set_target_properties(${arg_TARGET} PROPERTIES
    PREFIX "" SUFFIX "" OUTPUT_NAME "${arg_FILE}" LIBRARY_OUTPUT_DIRECTORY "${arg_OUTPUT_FOLDER}")
endfunction()
