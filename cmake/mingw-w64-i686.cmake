# Cross-building for 32-bit Windows with mingw-w64 (posix threads).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(korvane_triplet i686-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
