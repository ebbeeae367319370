# kitbay_interfaces(name FILE.idl [IMPORTS name...] [LIBRARY])
# An interface library with the header FILE.h for an IDL file, and the folders of the files that it imports.
# With LIBRARY, also compiles the file's type library FILE.tlb into the header's folder; the target's
# property KITBAY_TYPE_LIBRARY names it.
find_program(KITBAY_WIDL ${KITBAY_TRIPLET}-widl REQUIRED)
find_program(KITBAY_FAKETIME faketime REQUIRED)
# A type library contains its creation time, but the same sources must produce the same bytes.
set(KITBAY_TIMELESS_WIDL env TZ=UTC ${KITBAY_FAKETIME} -f "2000-01-01 00:00:00" ${KITBAY_WIDL})
set(KITBAY_WIDL_DIR "${CMAKE_CURRENT_LIST_DIR}/widl")

function(kitbay_interfaces name file)
  cmake_parse_arguments(PARSE_ARGV 2 arg "LIBRARY" "" "IMPORTS")
  get_filename_component(stem ${file} NAME_WE)
  set(source "${CMAKE_CURRENT_SOURCE_DIR}/${file}")
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/${name}")
  set(options -I "${KITBAY_WIDL_DIR}" -I "${CMAKE_CURRENT_SOURCE_DIR}")
  set(inputs "${source}" "${KITBAY_WIDL_DIR}/oaidl.idl")
  foreach(import IN LISTS arg_IMPORTS)
    get_target_property(imported ${import} KITBAY_IDL)
    get_filename_component(imported_folder "${imported}" DIRECTORY)
    list(APPEND options -I "${imported_folder}")
    list(APPEND inputs "${imported}")
  endforeach()

  file(MAKE_DIRECTORY "${folder}")
  set(outputs "${folder}/${stem}.h")
  add_custom_command(OUTPUT "${folder}/${stem}.h"
    COMMAND ${KITBAY_WIDL} ${options} -h -o "${folder}/${stem}.h" "${source}"
    DEPENDS ${inputs} VERBATIM)
  if(arg_LIBRARY)
    set(standard "${folder}/stdole2.tlb")
    list(APPEND outputs "${folder}/${stem}.tlb")
    add_custom_command(OUTPUT "${folder}/${stem}.tlb"
      COMMAND ${KITBAY_TIMELESS_WIDL} -t -o "${standard}" "${KITBAY_WIDL_DIR}/stdole2.idl"
      COMMAND ${KITBAY_TIMELESS_WIDL} ${options} -L "${folder}" -t -o "${folder}/${stem}.tlb" "${source}"
      DEPENDS ${inputs} "${KITBAY_WIDL_DIR}/stdole2.idl" VERBATIM)
  endif()

  add_custom_target(${name}_files DEPENDS ${outputs})
  add_library(${name} INTERFACE)
  add_dependencies(${name} ${name}_files)
  # Generated code need not meet the tree's warnings.
  target_include_directories(${name} SYSTEM INTERFACE "${folder}")
  target_link_libraries(${name} INTERFACE ${arg_IMPORTS})
  set_target_properties(${name} PROPERTIES KITBAY_IDL "${source}"
    KITBAY_TYPE_LIBRARY "${folder}/${stem}.tlb")
endfunction()
