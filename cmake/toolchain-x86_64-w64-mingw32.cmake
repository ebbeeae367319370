# 64-bit Windows; its programs run under the Wine prefix below build/.
set(KITBAY_TRIPLET x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
include("${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw-w64.cmake")
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../tools/wine_run")
