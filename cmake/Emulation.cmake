# Builds for another machine, whose programs an emulator runs (QV_EMULATOR, from the toolchain file).
set(QV_TIMEOUT_FACTOR 1)

# qv_cannot_be_emulated(PROGRAM TEST REASON...): these tests of a program are reported as disabled where an emulator runs
# it, after the program's gtest_discover_tests and in its directory. One that the program does not have becomes a test that
# fails.
function(qv_cannot_be_emulated program)
  if(NOT QV_EMULATOR)
    return()
  endif()
  set(script "if(NOT DEFINED ${program}_TESTS)\n  return() # it has not been built\nendif()\n")
  while(ARGN)
    list(POP_FRONT ARGN test reason)
    string(APPEND script "# ${reason}
list(FIND ${program}_TESTS \"${test}\" at)
if(at EQUAL -1)
  # ctest says nothing of an error here: a test that fails does.
  add_test(\"not-emulated, but no test of ${program}: ${test}\" \"${CMAKE_COMMAND}\" -E false)
else()
  set_tests_properties(\"${test}\" PROPERTIES DISABLED ON LABELS not-emulated)
endif()
")
  endwhile()
  file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/${program}.not-emulated.cmake" "${script}")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${CMAKE_CURRENT_BINARY_DIR}/${program}.not-emulated.cmake")
endfunction()

if(NOT QV_EMULATOR)
  return()
endif()

# A program of this build cannot start another by itself: the kernel would refuse it. What every program is linked with
# starts it through the emulator.
list(JOIN QV_EMULATOR "\", \"" emulator)
add_library(qv_emulation OBJECT tools/emulation/Starting.cpp)
target_link_libraries(qv_emulation PRIVATE qv_warnings)
target_compile_definitions(qv_emulation PRIVATE "QV_EMULATOR=\"${emulator}\"")
foreach(item "$<TARGET_OBJECTS:qv_emulation>" stdc++)
  link_libraries("$<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:${item}>")
endforeach()

# What an emulated test may take, as a multiple of what the machine's own may.
set(QV_TIMEOUT_FACTOR 5)

# What calling conventions can touch: sends and methods of every type, structures as arguments, the variadic logger.
set(QV_CORE_TESTS binding_test exchange_test installer_test startup_test)
add_custom_target(arm64-core)
