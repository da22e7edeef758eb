# Builds for another machine, whose programs an emulator runs (QV_EMULATOR, from the toolchain file).
set(QV_TIMEOUT_FACTOR 1)
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
