# Shared by both Windows toolchains, which first set KITBAY_TRIPLET, CMAKE_SYSTEM_PROCESSOR and KITBAY_BITS.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CROSSCOMPILING_EMULATOR env KITBAY_BITS=${KITBAY_BITS}
                                  "${CMAKE_CURRENT_LIST_DIR}/../tools/wine_run")

# Names the posix thread model, because only that one has std::thread and std::mutex.
set(CMAKE_C_COMPILER ${KITBAY_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KITBAY_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${KITBAY_TRIPLET}-windres)
set(CMAKE_RC_FLAGS_INIT "--codepage=65001")

# Programs and libraries contain the compiler's run-time.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-static")

# Filled by tools/build_windows_dependencies.
set(CMAKE_FIND_ROOT_PATH "${CMAKE_CURRENT_LIST_DIR}/../build/deps/${KITBAY_TRIPLET}"
                         "/usr/${KITBAY_TRIPLET}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
