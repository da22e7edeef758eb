# qv_add_app(NAME PLIST SOURCE...): a host app as its maker would build it: a flat bundle with an executable that
# links the platform and never the library. A PLIST that ends in ".in" may name the app as @QV_APP@.
function(qv_add_app name plist)
  add_executable(${name}.app ${ARGN})
  qv_objc(${name}.app)
  qv_link_platform(${name}.app)
  target_include_directories(${name}.app PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/Shared")
  set_target_properties(${name}.app PROPERTIES
    OUTPUT_NAME ${name}
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/apps/${name}.app")
  set(QV_APP ${name})
  if(plist MATCHES "\\.in$")
    configure_file(${plist} "${CMAKE_BINARY_DIR}/apps/${name}.app/Info.plist" @ONLY)
  else()
    configure_file(${plist} "${CMAKE_BINARY_DIR}/apps/${name}.app/Info.plist" COPYONLY)
  endif()
endfunction()

# qv_add_app_library(APP NAME [LINKED] SOURCE...): a dynamic library that the app carries in its bundle, as
# Frameworks/libNAME.so. With LINKED it is loaded with the app; otherwise the app loads it when it likes.
function(qv_add_app_library app name)
  cmake_parse_arguments(arg "LINKED" "" "" ${ARGN})
  set(target ${app}.${name})
  add_library(${target} MODULE ${arg_UNPARSED_ARGUMENTS})
  qv_objc(${target})
  target_link_options(${target} PRIVATE "$<TARGET_FILE:QVDevice>")
  target_link_libraries(${target} PRIVATE ${QV_FOUNDATION_LIBS})
  add_dependencies(${target} QVDevice)
  target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/Shared")
  set_target_properties(${target} PROPERTIES
    OUTPUT_NAME ${name}
    PREFIX lib
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/apps/${app}.app/Frameworks")
  add_dependencies(${app}.app ${target})
  if(arg_LINKED)
    set(file "${CMAKE_BINARY_DIR}/apps/${app}.app/Frameworks/lib${name}.so")
    target_link_options(${app}.app PRIVATE -Wl,--no-as-needed "${file}")
    set_property(TARGET ${app}.app APPEND PROPERTY LINK_DEPENDS "${file}")
    set_property(TARGET ${app}.app APPEND PROPERTY BUILD_RPATH "$ORIGIN/Frameworks")
  endif()
endfunction()

# qv_add_extension(APP NAME PLIST [PLAIN] SOURCE...): an app extension that the app carries, as PlugIns/NAME.appex. With
# PLAIN it is any program, which links nothing of the platform.
function(qv_add_extension app name plist)
  cmake_parse_arguments(arg "PLAIN" "" "" ${ARGN})
  set(target ${name}.appex)
  set(bundle "${CMAKE_BINARY_DIR}/apps/${app}.app/PlugIns/${target}")
  add_executable(${target} ${arg_UNPARSED_ARGUMENTS})
  if(NOT arg_PLAIN)
    qv_objc(${target})
    qv_link_platform(${target})
    target_include_directories(${target} PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/Shared")
  endif()
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name} RUNTIME_OUTPUT_DIRECTORY "${bundle}")
  configure_file(${plist} "${bundle}/Info.plist" COPYONLY)
  add_dependencies(${app}.app ${target})
endfunction()
