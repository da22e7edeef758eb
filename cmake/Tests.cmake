find_package(GTest REQUIRED)
include(GoogleTest)

# qv_add_test(NAME SOURCES file... [LIBS lib...] [INSTALL app...]): one GoogleTest binary; ctest runs each of its tests in a process and a
# container of its own, which is also how the binary lists its tests: when ctest runs, with the sanitizers' options that
# the test presets set. With INSTALL there is a device on which these apps of the build are installed.
function(qv_add_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS;INSTALL" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  qv_objc(${name})
  qv_link_platform(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} Zorbel GTest::gtest GTest::gmock GTest::gtest_main)
  set(installs "")
  foreach(app IN LISTS arg_INSTALL)
    list(APPEND installs --install "${CMAKE_BINARY_DIR}/apps/${app}.app")
    add_dependencies(${name} ${app}.app)
  endforeach()
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "$<TARGET_FILE:qvdevice>;exec;${installs};--")
  add_dependencies(${name} qvdevice)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
