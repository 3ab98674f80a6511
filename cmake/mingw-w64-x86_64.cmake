# Cross-building for 64-bit Windows with mingw-w64 (posix threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
set(korvane_triplet x86_64-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
