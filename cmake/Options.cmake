# Compiler settings of everything that we write.
add_library(korvane_options INTERFACE)
target_compile_definitions(korvane_options INTERFACE
  UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT
  WINVER=0x0601 _WIN32_WINNT=0x0601 _WIN32_IE=0x0800)

if(MSVC)
  # Has not been tried: its first warning is not to end the first build.
  option(KORVANE_WARNINGS_AS_ERRORS "A warning ends the build" OFF)
  target_compile_options(korvane_options INTERFACE
    /W4 $<$<BOOL:${KORVANE_WARNINGS_AS_ERRORS}>:/WX> /utf-8 /permissive- /Zc:__cplusplus /EHsc /GR- /Brepro)
  target_link_options(korvane_options INTERFACE /Brepro)
  set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
else()
  option(KORVANE_WARNINGS_AS_ERRORS "A warning ends the build" ON)
  target_compile_options(korvane_options INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic $<$<BOOL:${KORVANE_WARNINGS_AS_ERRORS}>:-Werror>
      -Wshadow -Wconversion -Wsign-conversion
      -Wold-style-cast -Woverloaded-virtual -Wcast-qual -Wnull-dereference
      -Wduplicated-cond -Wlogical-op>
    # Function-local statics are constants or idempotent look-ups: guarding them would bring the runtime's locks in.
    $<$<COMPILE_LANGUAGE:CXX>:-fno-threadsafe-statics>
    # Nothing asks for a type at run time; the descriptions of types would be a tenth of the DLL.
    $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti>
    # What cannot throw is not unwound on 32-bit Windows. (64-bit Windows unwinds everything by its own tables.)
    $<$<AND:$<COMPILE_LANGUAGE:CXX>,$<EQUAL:${CMAKE_SIZEOF_VOID_P},4>>:-fno-asynchronous-unwind-tables>
    -ffunction-sections -fdata-sections)
  # What is built from the same sources is the same, byte for byte.
  target_link_options(korvane_options INTERFACE -Wl,--no-insert-timestamp)
endif()

# korvane_own_manifest(<target>): its resources hold a manifest, where the linker would put one of its own making.
function(korvane_own_manifest target)
  if(MSVC)
    target_link_options(${target} PRIVATE /MANIFEST:NO)
  endif()
endfunction()
