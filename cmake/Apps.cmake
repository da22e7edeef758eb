# qv_add_app(NAME PLIST SOURCE...): a host app as its maker would build it: a flat bundle with an executable that
# links the platform and never the library.
function(qv_add_app name plist)
  add_executable(${name}.app ${ARGN})
  qv_objc(${name}.app)
  qv_link_platform(${name}.app)
  set_target_properties(${name}.app PROPERTIES
    OUTPUT_NAME ${name}
    RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/apps/${name}.app")
  configure_file(${plist} "${CMAKE_BINARY_DIR}/apps/${name}.app/Info.plist" COPYONLY)
endfunction()
