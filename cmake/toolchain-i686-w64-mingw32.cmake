# 32-bit Windows; its programs run under the Wine that tools/wine32 fetches.
set(KITBAY_TRIPLET i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KITBAY_BITS 32)
include("${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw-w64.cmake")
