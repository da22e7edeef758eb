find_package(GTest REQUIRED)
include(GoogleTest)

# Most of the time that a test takes to compile goes into headers that nearly all of them include: these are compiled once.
# Each test includes what it needs all the same. A test is run once: little optimisation, and of the debugging information
# what a stack trace shows. With a compiler cache neither is a gain: what it has seen is not compiled at all.
if(CMAKE_CXX_COMPILER_LAUNCHER)
  set(quickly OFF)
else()
  set(quickly ON)
endif()
option(QV_COMPILE_TESTS_QUICKLY "Compile the tests with precompiled headers and little optimisation" ${quickly})
set(QV_QUICK_TEST_OPTIONS "$<$<CONFIG:RelWithDebInfo>:-O1;-g1>")

# The target whose precompiled headers the tests use.
function(qv_precompile_test_headers)
  add_executable(qv_test_headers EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/tests/Precompiled.cpp"
    "${PROJECT_SOURCE_DIR}/tests/Precompiled.mm")
  qv_objc(qv_test_headers)
  target_link_libraries(qv_test_headers PRIVATE GTest::gtest GTest::gmock ${QV_FOUNDATION_LIBS})
  target_compile_options(qv_test_headers PRIVATE "${QV_QUICK_TEST_OPTIONS}")
  target_precompile_headers(qv_test_headers PRIVATE
    "$<$<COMPILE_LANGUAGE:OBJCXX>:<UIKit/UIKit.h$<ANGLE-R>>"
    <algorithm> <array> <filesystem> <fstream> <functional> <map> <optional> <sstream> <string> <thread> <vector>
    <gmock/gmock.h> <gtest/gtest.h> <nlohmann/json.hpp>)
endfunction()

# The programs whose tests have threads, or processes that talk to each other: all that ThreadSanitizer is to see. The rest
# runs on one thread, and building it for that would take longer than everything else.
set(QV_THREAD_TESTS binding_test decisions_test device_accelerate_test device_application_test device_core_tests
  device_extension_test device_graphics_test device_pasteboard_test device_uikit_test log_capture_test passcode_extension_test
  passcode_process_test protection_test sdk_tests startup_test wipe_test zorbel_delegate_termination_test zorbel_delegate_test)

# qv_add_test(NAME SOURCES file... [LIBS lib...] [INSTALL app...]): one GoogleTest binary; ctest runs each of its tests in a
# process and a container of its own, which is also how the binary lists its tests: when ctest runs, with the sanitizers'
# options that the test presets set. With INSTALL there is a device on which these apps of the build are installed.
function(qv_add_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;LIBS;INSTALL" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  if(QV_COMPILE_TESTS_QUICKLY)
    if(NOT TARGET qv_test_headers)
      qv_precompile_test_headers()
    endif()
    target_compile_options(${name} PRIVATE "${QV_QUICK_TEST_OPTIONS}")
    target_precompile_headers(${name} REUSE_FROM qv_test_headers)
  endif()
  qv_objc(${name})
  qv_link_platform(${name})
  target_link_libraries(${name} PRIVATE ${arg_LIBS} Zorbel GTest::gtest GTest::gmock GTest::gtest_main)
  if(QVSANDBOX_SANITIZER STREQUAL "thread" AND NOT name IN_LIST QV_THREAD_TESTS)
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    return()
  endif()
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
  set(properties TIMEOUT ${timeout})
  if(name IN_LIST QV_CORE_TESTS)
    list(APPEND properties LABELS arm64-core)
    add_dependencies(arm64-core ${name})
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
