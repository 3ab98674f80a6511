# korvane_idl(<name> <file.idl> [<name it imports>...])
#
# Compiles an interface definition to <name>.h, <name>_i.c (both in idl/) and <name>.tlb (beside the DLL,
# so that hosts find it there), with widl or, on Windows, midl.

set(KORVANE_IDL_DIR "${CMAKE_BINARY_DIR}/idl")
set(KORVANE_TLB_DIR "${CMAKE_BINARY_DIR}")
file(MAKE_DIRECTORY "${KORVANE_IDL_DIR}")

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(korvane_idl_arch win64)
  set(korvane_wine_tlb_dir /usr/lib/x86_64-linux-gnu/wine/x86_64-windows)
else()
  set(korvane_idl_arch win32)
  set(korvane_wine_tlb_dir /usr/lib/i386-linux-gnu/wine/i386-windows)
endif()

if(KORVANE_WIDL)
  # Debian's mingw-w64 has no system IDL files and no stdole2.tlb; Wine's development package has both.
  set(KORVANE_SYSTEM_IDL_DIR /usr/include/wine/wine/windows CACHE PATH "Folder of oaidl.idl and ocidl.idl")
  set(KORVANE_SYSTEM_TLB_DIR ${korvane_wine_tlb_dir} CACHE PATH "Folder of stdole2.tlb")
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  set(korvane_undate "${Python3_EXECUTABLE}" "${CMAKE_SOURCE_DIR}/cmake/undate.py")
endif()

function(korvane_idl name file)
  get_filename_component(source "${file}" ABSOLUTE)
  # Compiled from its own folder, since what is made names its source as it was given.
  get_filename_component(source_name "${file}" NAME)
  get_filename_component(source_dir "${source}" DIRECTORY)
  set(header "${KORVANE_IDL_DIR}/${name}.h")
  set(ids "${KORVANE_IDL_DIR}/${name}_i.c")
  set(tlb "${KORVANE_TLB_DIR}/${name}.tlb")

  set(included_dir "${CMAKE_SOURCE_DIR}/framework/contracts")
  set(imports -I "${included_dir}")
  set(imported_files "${included_dir}/Properties.idl")
  foreach(import ${ARGN})
    get_property(path GLOBAL PROPERTY korvane_idl_${import})
    get_filename_component(folder "${path}" DIRECTORY)
    list(APPEND imports -I "${folder}")
    list(APPEND imported_files "${path}" "${KORVANE_TLB_DIR}/${import}.tlb")
  endforeach()
  set_property(GLOBAL PROPERTY korvane_idl_${name} "${source}")

  if(KORVANE_WIDL)
    set(widl ${KORVANE_WIDL} --${korvane_idl_arch} -I "${KORVANE_SYSTEM_IDL_DIR}" ${imports}
        -L "${KORVANE_TLB_DIR}" -L "${KORVANE_SYSTEM_TLB_DIR}")
    add_custom_command(
      OUTPUT "${header}" "${ids}" "${tlb}"
      COMMAND ${widl} -h -o "${header}" "${source_name}"
      COMMAND ${widl} -u -o "${ids}" "${source_name}"
      COMMAND ${widl} -t -o "${tlb}" "${source_name}"
      COMMAND ${korvane_undate} "${tlb}"
      WORKING_DIRECTORY "${source_dir}"
      DEPENDS "${source}" ${imported_files}
      COMMENT "Interface definition ${name}" VERBATIM)
  else()
    add_custom_command(
      OUTPUT "${header}" "${ids}" "${tlb}"
      COMMAND midl /nologo /char signed /env ${korvane_idl_arch} ${imports} -I "${KORVANE_TLB_DIR}"
              /out "${KORVANE_IDL_DIR}" /h ${name}.h /iid ${name}_i.c /tlb "${tlb}" "${source}"
      DEPENDS "${source}" ${imported_files}
      COMMENT "Interface definition ${name}" VERBATIM)
  endif()
  set_property(GLOBAL APPEND PROPERTY korvane_idl_headers "${header}")
  set_property(GLOBAL APPEND PROPERTY korvane_idl_ids "${ids}")
  set_property(GLOBAL APPEND PROPERTY korvane_idl_libraries "${tlb}")
endfunction()

# korvane_binding(<name> [<name it imports>...])
#
# Compiles an interface definition once more, to idl/<name>.binding.tlb, in which everything stands that its members
# refer to (see library/KorvaneDlg.rc).

function(korvane_binding name)
  get_property(source GLOBAL PROPERTY korvane_idl_${name})
  set(tlb "${KORVANE_IDL_DIR}/${name}.binding.tlb")
  set(included_dir "${CMAKE_SOURCE_DIR}/framework/contracts")
  set(imports -I "${included_dir}")
  set(imported_files "${included_dir}/Properties.idl")
  foreach(import ${ARGN})
    get_property(path GLOBAL PROPERTY korvane_idl_${import})
    get_filename_component(folder "${path}" DIRECTORY)
    list(APPEND imports -I "${folder}")
    list(APPEND imported_files "${path}")
  endforeach()

  if(KORVANE_WIDL)
    add_custom_command(
      OUTPUT "${tlb}"
      COMMAND ${KORVANE_WIDL} --${korvane_idl_arch} -D KORVANE_BINDING -I "${KORVANE_SYSTEM_IDL_DIR}" ${imports}
              -L "${KORVANE_SYSTEM_TLB_DIR}" -t -o "${tlb}" "${source}"
      COMMAND ${korvane_undate} "${tlb}"
      DEPENDS "${source}" ${imported_files}
      COMMENT "Interface definition ${name} for calls by name" VERBATIM)
  else()
    add_custom_command(
      OUTPUT "${tlb}"
      COMMAND midl /nologo /char signed /env ${korvane_idl_arch} /D KORVANE_BINDING ${imports}
              /out "${KORVANE_IDL_DIR}/binding" /tlb "${tlb}" "${source}"
      DEPENDS "${source}" ${imported_files}
      COMMENT "Interface definition ${name} for calls by name" VERBATIM)
    file(MAKE_DIRECTORY "${KORVANE_IDL_DIR}/binding")
  endif()
  set_property(GLOBAL APPEND PROPERTY korvane_idl_libraries "${tlb}")
endfunction()

# korvane_describe(<name> <program id>)
#
# Reads an interface definition and sets what assembly manifests tell of it: <name>_ID of its type library,
# <name>_CLASSES, whose ProgIDs begin with <program id>, and <name>_PROXIES, those of its dual interfaces and of its events.

function(korvane_describe name program)
  get_property(path GLOBAL PROPERTY korvane_idl_${name})
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${path}")
  file(READ "${path}" text)
  # Brackets and semicolons have a meaning of their own in lists.
  string(REPLACE "[" "<" text "${text}")
  string(REPLACE "]" ">" text "${text}")
  string(REPLACE ";" "" text "${text}")
  set(attributes "<[^<>]*uuid[^<>]*>[ \r\n]*")
  set(id ".*uuid.([0-9A-Fa-f-]+).*")

  string(REGEX MATCH "${attributes}library" library "${text}")
  string(REGEX REPLACE "${id}" "{\\1}" library "${library}")

  set(status recomposeonresize,cantlinkinside,insideout,activatewhenvisible,setclientsitefirst)
  string(REGEX MATCHALL "${attributes}coclass +[A-Za-z]+" classes "${text}")
  set(class_elements "")
  foreach(class IN LISTS classes)
    string(REGEX REPLACE "${id}" "{\\1}" class_id "${class}")
    string(REGEX REPLACE ".* " "" class_name "${class}")
    set(control "")
    if(class MATCHES ", *control>")
      set(control "\n              miscStatusContent=\"${status}\"")
    endif()
    string(APPEND class_elements "
    <comClass clsid=\"${class_id}\" progid=\"${program}.${class_name}\"
              tlbid=\"${library}\" threadingModel=\"Apartment\"${control}/>")
  endforeach()

  # What the platform registers with a type library: its calls go by the types of a dual interface, and through IDispatch
  # for a dispinterface.
  set(proxy_of_interface "{00020424-0000-0000-C000-000000000046}")
  set(proxy_of_dispinterface "{00020420-0000-0000-C000-000000000046}")
  set(proxies "")
  foreach(kind interface dispinterface)
    string(REGEX MATCHALL "${attributes}${kind} +[A-Za-z]+" interfaces "${text}")
    foreach(interface IN LISTS interfaces)
      string(REGEX REPLACE "${id}" "{\\1}" interface_id "${interface}")
      string(REGEX REPLACE ".* " "" interface_name "${interface}")
      string(APPEND proxies "
  <comInterfaceExternalProxyStub name=\"${interface_name}\" iid=\"${interface_id}\" tlbid=\"${library}\"
                                 proxyStubClsid32=\"${proxy_of_${kind}}\"/>")
    endforeach()
  endforeach()

  set(${name}_ID "${library}" PARENT_SCOPE)
  set(${name}_CLASSES "${class_elements}" PARENT_SCOPE)
  set(${name}_PROXIES "${proxies}" PARENT_SCOPE)
endfunction()
