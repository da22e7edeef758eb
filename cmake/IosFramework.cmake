# The target QVSandbox becomes QVSandbox.framework. tests/ios checks what came out.
string(TOLOWER "${QV_IOS_PLATFORM}" QV_IOS_PLATFORM_NAME)
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
  "-framework Accelerate" "-framework CoreData" "-framework CoreGraphics" "-framework Foundation" "-framework Security"
  "-framework UIKit" "-framework Zorbel" objc)

# The framework itself tells nothing of where it was built; what a debugger wants is in the .dSYM beside it. Nor may the
# objects' paths and times of change go into the UUID by which the two find each other.
foreach(target qvsandbox_core QVSandbox)
  target_compile_options(${target} PRIVATE "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
endforeach()
set_property(TARGET QVSandbox PROPERTY RULE_LAUNCH_LINK "${CMAKE_COMMAND} -E env ZERO_AR_DATE=1")
target_link_options(QVSandbox PRIVATE -Wl,-oso_prefix,. -Wl,-adhoc_codesign)
find_program(QV_DSYMUTIL NAMES dsymutil-19 dsymutil REQUIRED)
add_custom_command(TARGET QVSandbox POST_BUILD
  COMMAND ${CMAKE_COMMAND} -E rm -rf QVSandbox.framework.dSYM
  COMMAND ${QV_DSYMUTIL} -o QVSandbox.framework.dSYM QVSandbox.framework/QVSandbox
  COMMAND ${CMAKE_STRIP} -S -x QVSandbox.framework/QVSandbox
  WORKING_DIRECTORY "${CMAKE_BINARY_DIR}"
  VERBATIM)

# The library is small files under the same large headers: most of the time went into reading those again.
target_precompile_headers(qvsandbox_core PRIVATE
  "$<$<COMPILE_LANGUAGE:CXX>:${CMAKE_CURRENT_LIST_DIR}/ios/precompiled.hpp>")
