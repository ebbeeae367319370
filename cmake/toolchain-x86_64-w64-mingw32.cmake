# 64-bit Windows; its programs run under Debian's own Wine.
set(KITBAY_TRIPLET x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(KITBAY_BITS 64)
include("${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw-w64.cmake")
