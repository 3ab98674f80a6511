# What both mingw-w64 toolchain files share. The compilers are named with their thread model: the plain
# name can be the win32-threads variant, which has no std::mutex for the test framework.
set(CMAKE_C_COMPILER ${korvane_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${korvane_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${korvane_triplet}-windres)
set(KORVANE_WIDL ${korvane_triplet}-widl)

set(CMAKE_FIND_ROOT_PATH /usr/${korvane_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

if(CMAKE_SYSTEM_PROCESSOR STREQUAL x86)
  set(korvane_wine /usr/lib/wine/wine)
else()
  set(korvane_wine /usr/lib/wine/wine64)
endif()
if(EXISTS ${korvane_wine})
  set(CMAKE_CROSSCOMPILING_EMULATOR ${korvane_wine})
endif()
