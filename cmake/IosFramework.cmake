# The target QVSandbox becomes QVSandbox.framework. tests/ios checks what came out.
set_target_properties(QVSandbox PROPERTIES
  FRAMEWORK ON
  MACOSX_FRAMEWORK_INFO_PLIST "${CMAKE_CURRENT_SOURCE_DIR}/Info.plist"
  LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}"
  INSTALL_NAME_DIR "@rpath"
  BUILD_WITH_INSTALL_NAME_DIR ON
  MACHO_CURRENT_VERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}.${PROJECT_VERSION_PATCH}"
  MACHO_COMPATIBILITY_VERSION 1.0.0)

target_link_options(QVSandbox PRIVATE "SHELL:-F ${QV_IOS_FRAMEWORKS}" -Wl,-dead_strip)
# Classes are looked up by name when the library is loaded, so whoever owns them is loaded before it: also a framework
# of which no symbol is imported stays among the load commands.
target_link_libraries(QVSandbox PRIVATE
  "-framework CoreData" "-framework Foundation" "-framework Security" "-framework UIKit" "-framework Zorbel" objc)

# The framework itself tells nothing of where it was built; what a debugger wants is in the .dSYM beside it.
foreach(target qvsandbox_core QVSandbox)
  target_compile_options(${target} PRIVATE "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
endforeach()
find_program(QV_DSYMUTIL NAMES dsymutil-19 dsymutil REQUIRED)
add_custom_command(TARGET QVSandbox POST_BUILD
  COMMAND ${QV_DSYMUTIL} -o "${CMAKE_BINARY_DIR}/QVSandbox.framework.dSYM" "$<TARGET_FILE:QVSandbox>"
  COMMAND ${CMAKE_STRIP} -S -x "$<TARGET_FILE:QVSandbox>"
  VERBATIM)
