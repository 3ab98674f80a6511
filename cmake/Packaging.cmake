# What a release consists of, and how it is packed (see scripts/release.sh): the library for developers of hosts (`sdk`),
# the demo, ready to run (`demo`), and an installer of both. Both word sizes come into one package: each build installs
# into a folder of its own for what is built, and into the same one for all else.

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(arch x64)
else()
  set(arch x86)
endif()

# Side by side, as a host without registration needs it.
set(libraries "")
foreach(name KorvaneDlg KorvaneLib KorvaneInterfaces KorvaneData)
  list(APPEND libraries "${KORVANE_TLB_DIR}/${name}.tlb")
endforeach()
foreach(component sdk demo)
  install(TARGETS KorvaneDlg RUNTIME DESTINATION ${arch} COMPONENT ${component})
  install(FILES ${libraries} "${CMAKE_BINARY_DIR}/KorvaneDlg.Assembly.manifest" DESTINATION ${arch} COMPONENT ${component})
  install(FILES LICENSE README.md DESTINATION . COMPONENT ${component})
endforeach()

install(FILES CHANGELOG.md DESTINATION . COMPONENT sdk)
install(FILES "${CMAKE_BINARY_DIR}/KorvaneDlg.Application.manifest" DESTINATION ${arch} COMPONENT sdk)
install(FILES framework/contracts/KorvaneLib.idl framework/contracts/KorvaneInterfaces.idl
  framework/contracts/Properties.idl datalayer/KorvaneData.idl library/KorvaneDlg.idl ${idl_headers} ${idl_ids}
  DESTINATION include COMPONENT sdk)
install(DIRECTORY docs samples DESTINATION . COMPONENT sdk PATTERN "*.in" EXCLUDE)
configure_file(samples/Sample.exe.manifest.in "${KORVANE_IDL_DIR}/Sample.exe.manifest" @ONLY)
foreach(sample AtlHost SiteHost)
  install(FILES "${KORVANE_IDL_DIR}/Sample.exe.manifest" DESTINATION ${arch} RENAME ${sample}.exe.manifest COMPONENT sdk)
endforeach()

if(TARGET KorvaneHost)
  install(TARGETS KorvaneHost KorvaneData RUNTIME DESTINATION ${arch} COMPONENT demo)
  install(FILES "${CMAKE_BINARY_DIR}/KorvaneData.Assembly.manifest" DESTINATION ${arch} COMPONENT demo)
  install(FILES demo/datalayer/KorvaneStore.idl "${KORVANE_IDL_DIR}/KorvaneStore.h" "${KORVANE_IDL_DIR}/KorvaneStore_i.c"
    DESTINATION include COMPONENT demo)
endif()

foreach(KORVANE_PACKAGE sdk demo installer)
  configure_file(cmake/Package.cmake.in "${CMAKE_BINARY_DIR}/package/${KORVANE_PACKAGE}.cmake" @ONLY)
endforeach()
