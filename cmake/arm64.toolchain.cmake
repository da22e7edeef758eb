# Linux on arm64, built here with clang-19 and lld-19 against what scripts/arm64-root.sh has unpacked, and run under
# qemu-user. docs/arm64.md tells what for.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR aarch64)

cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH project)
set(CMAKE_SYSROOT "${project}/build/arm64-root")
if(NOT EXISTS "${CMAKE_SYSROOT}/.complete")
  message(FATAL_ERROR "${CMAKE_SYSROOT} is not there; run scripts/arm64-root.sh")
endif()

find_program(QV_CLANG clang-19 REQUIRED)
find_program(QV_CLANGXX clang++-19 REQUIRED)
set(CMAKE_C_COMPILER ${QV_CLANG})
set(CMAKE_CXX_COMPILER ${QV_CLANGXX})
foreach(lang C CXX OBJC OBJCXX)
  set(CMAKE_${lang}_COMPILER_TARGET aarch64-linux-gnu)
endforeach()
set(CMAKE_AR llvm-ar-19 CACHE STRING "")
set(CMAKE_RANLIB llvm-ranlib-19 CACHE STRING "")
foreach(kind SHARED MODULE EXE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld")
endforeach()

set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} "${CMAKE_SYSROOT}")
set(ENV{PKG_CONFIG_LIBDIR} "${CMAKE_SYSROOT}/usr/lib/aarch64-linux-gnu/pkgconfig:${CMAKE_SYSROOT}/usr/share/pkgconfig")

# How a program of this build is started: confined from outside, for the emulator knows nothing of Landlock.
set(QV_NATIVE_BIN "${project}/build/linux/bin")
set(QV_EMULATOR "${QV_NATIVE_BIN}/qvconfine" "${CMAKE_SYSROOT}/qemu-aarch64-static" -L "${CMAKE_SYSROOT}")
set(CMAKE_CROSSCOMPILING_EMULATOR ${QV_EMULATOR})
