# 32-bit Windows; its programs run only where a 32-bit Wine is installed.
set(KITBAY_TRIPLET i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
include("${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw-w64.cmake")
execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/../tools/wine_run" --can-run-32-bit
                RESULT_VARIABLE kitbay_no_32_bit_wine)
if(kitbay_no_32_bit_wine EQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine_run")
endif()
