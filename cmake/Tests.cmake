find_package(GTest REQUIRED)
include(GoogleTest)

# The tests' own: a test is run once, so it is not optimised, and has of the debugging information what a stack trace shows.
# With OPTIMISED it is: where it is the test's own code that is tested, such as calls through the library's templates.
# qv_test_headers and qv_optimised_test_headers are the targets whose precompiled headers the tests use.
function(qv_compile_test_quickly name)
  cmake_parse_arguments(arg "OPTIMISED" "" "" ${ARGN})
  if(NOT QV_COMPILE_QUICKLY)
    return()
  endif()
  set(headers qv_test_headers)
  set(options "$<$<CONFIG:RelWithDebInfo>:-O0>" -g1)
  if(arg_OPTIMISED)
    set(headers qv_optimised_test_headers)
    set(options "$<$<CONFIG:RelWithDebInfo>:-O1>" -g1)
  endif()
  if(NOT TARGET ${headers})
    add_executable(${headers} EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/tests/Precompiled.cpp"
      "${PROJECT_SOURCE_DIR}/tests/Precompiled.mm")
    qv_objc(${headers})
    target_link_libraries(${headers} PRIVATE GTest::gtest GTest::gmock ${QV_FOUNDATION_LIBS})
    target_compile_options(${headers} PRIVATE ${options})
    qv_precompile(${headers} "${QV_UIKIT_HEADER}"
      <algorithm> <array> <filesystem> <fstream> <functional> <map> <optional> <sstream> <string> <thread> <vector>
      <gmock/gmock.h> <gtest/gtest.h> <nlohmann/json.hpp>)
  endif()
  target_compile_options(${name} PRIVATE ${options})
  target_precompile_headers(${name} REUSE_FROM ${headers})
endfunction()

# The programs whose tests have threads, of their own or of the device's: all that ThreadSanitizer is to see. The rest runs
# on one thread, and building it for that would take longer than everything else.
set(QV_THREAD_TESTS binding_test console_server_test decisions_test device_accelerate_test device_application_test device_core_tests
  device_extension_test device_graphics_test device_pasteboard_test device_uikit_test passcode_extension_test
  passcode_process_test protection_test qvdevice_extension_tests sdk_tests wipe_test
  zorbel_delegate_termination_test)
if(QVSANDBOX_SANITIZER STREQUAL "thread")
  add_custom_target(thread-tests)
endif()

# qv_labels(NAME OUT): the properties by which ctest chooses a program's tests, and the target that builds what it chooses.
function(qv_labels name out)
  set(${out} "" PARENT_SCOPE)
  if(QVSANDBOX_SANITIZER STREQUAL "thread" AND name IN_LIST QV_THREAD_TESTS)
    set(${out} LABELS threads PARENT_SCOPE)
    add_dependencies(thread-tests ${name})
  elseif(name IN_LIST QV_CORE_TESTS)
    set(${out} LABELS arm64-core PARENT_SCOPE)
    add_dependencies(arm64-core ${name})
  endif()
endfunction()

# qv_add_test(NAME [OPTIMISED] SOURCES file... [LIBS lib...] [INSTALL app...]): one GoogleTest binary; ctest runs each of its
# tests in a process and a container of its own, which is also how the binary lists its tests: when ctest runs, with the
# sanitizers' options that the test presets set. With INSTALL there is a device on which these apps of the build are
# installed.
function(qv_add_test name)
  cmake_parse_arguments(arg "OPTIMISED" "" "SOURCES;LIBS;INSTALL" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  if(arg_OPTIMISED)
    qv_compile_test_quickly(${name} OPTIMISED)
  else()
    qv_compile_test_quickly(${name})
  endif()
  qv_objc(${name})
  qv_link_platform(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} Zorbel GTest::gtest GTest::gmock GTest::gtest_main)
  set(installs "")
  foreach(app IN LISTS arg_INSTALL)
    list(APPEND installs --install "${CMAKE_BINARY_DIR}/apps/${app}.app")
    add_dependencies(${name} ${app}.app)
  endforeach()
  if(QV_EMULATOR AND NOT installs)
    # The container is this machine's to make, which takes an emulated process less.
    set(runner "${QV_NATIVE_BIN}/qvdevice;exec;--;${QV_EMULATOR}")
  elseif(QV_EMULATOR)
    # An app's extensions are started by qvdevice, and only an emulated one can start those of this build.
    set(runner "${QV_EMULATOR};$<TARGET_FILE:qvdevice>;exec;${installs};--")
    add_dependencies(${name} qvdevice)
  else()
    set(runner "$<TARGET_FILE:qvdevice>;exec;${installs};--")
    add_dependencies(${name} qvdevice)
  endif()
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR "${runner}")
  math(EXPR timeout "120 * ${QV_TIMEOUT_FACTOR}")
  qv_labels(${name} labels)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT ${timeout} ${labels})
endfunction()
