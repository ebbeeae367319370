# The settings with which every target of the tree is compiled.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_VERIFY_INTERFACE_HEADER_SETS ON)

add_compile_options(-Wall -Wextra -Wpedantic -Werror)
if(KITBAY_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(KITBAY_FUZZERS)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(WIN32)
  # Windows 7 and later; the wide-character functions by default.
  add_compile_definitions(_WIN32_WINNT=0x0601 WINVER=0x0601 UNICODE _UNICODE NOMINMAX
                          WIN32_LEAN_AND_MEAN)
  # The same sources produce the same bytes, whenever they are linked.
  add_link_options(-Wl,--no-insert-timestamp)
endif()
