# QVSandbox.framework for iPhones and iPads, or for one architecture of their simulator: on a Mac with Xcode's SDK,
# elsewhere with clang-19, lld-19 and the folder ios/ beside this file in the SDK's place. docs/ios.md tells what that
# folder holds and why it is enough. QV_IOS_PLATFORM is iPhoneOS or iPhoneSimulator, QV_IOS_ARCH arm64 or x86_64.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QV_IOS_PLATFORM QV_IOS_ARCH)
set(CMAKE_SYSTEM_NAME iOS)
set(CMAKE_SYSTEM_PROCESSOR ${QV_IOS_ARCH})
set(QV_IOS_DEPLOYMENT_TARGET 12.0)
if(QV_IOS_PLATFORM STREQUAL "iPhoneSimulator")
  set(ios_variant "-simulator")
  # There was no simulator for arm64 before this release, and the tools raise anything lower to it.
  if(QV_IOS_ARCH STREQUAL "arm64")
    set(QV_IOS_DEPLOYMENT_TARGET 14.0)
  endif()
endif()

# The management SDK's maker ships no stub for the linker; ours serves both kinds of host.
set(QV_IOS_FRAMEWORKS "${CMAKE_CURRENT_LIST_DIR}/ios/Frameworks")

if(CMAKE_HOST_APPLE)
  string(TOLOWER "${QV_IOS_PLATFORM}" sdk)
  set(CMAKE_OSX_ARCHITECTURES ${QV_IOS_ARCH} CACHE STRING "" FORCE)
  set(CMAKE_OSX_DEPLOYMENT_TARGET ${QV_IOS_DEPLOYMENT_TARGET} CACHE STRING "" FORCE)
  set(CMAKE_OSX_SYSROOT ${sdk} CACHE STRING "" FORCE)
  return()
endif()

find_program(QV_CLANG clang-19 REQUIRED)
find_program(QV_CLANGXX clang++-19 REQUIRED)
foreach(lang C OBJC)
  set(CMAKE_${lang}_COMPILER ${QV_CLANG})
endforeach()
foreach(lang CXX OBJCXX)
  set(CMAKE_${lang}_COMPILER ${QV_CLANGXX})
endforeach()
foreach(lang C CXX OBJC OBJCXX)
  set(CMAKE_${lang}_COMPILER_TARGET ${QV_IOS_ARCH}-apple-ios${QV_IOS_DEPLOYMENT_TARGET}${ios_variant})
endforeach()
set(CMAKE_AR llvm-ar-19 CACHE STRING "")
set(CMAKE_RANLIB llvm-ranlib-19 CACHE STRING "")
set(CMAKE_STRIP llvm-strip-19 CACHE STRING "")
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 CACHE STRING "")

# CMake takes the kind of device from the folder's name, clang the release from its SDKSettings.json.
set(CMAKE_OSX_SYSROOT "${CMAKE_CURRENT_LIST_DIR}/ios/${QV_IOS_PLATFORM}.sdk" CACHE PATH "")

# The order is the point: libc++, then what musl would get wrong, then the compiler's own <stddef.h> and friends, and
# musl last, for nothing but declarations.
file(GLOB musl_include LIST_DIRECTORIES true "/usr/include/*-linux-musl")
set(libcxx_include /usr/lib/llvm-19/include/c++/v1)
if(NOT musl_include OR NOT EXISTS ${libcxx_include}/__config)
  message(FATAL_ERROR "libc++-19-dev and musl-dev are needed for their headers; run scripts/setup.sh")
endif()
list(GET musl_include 0 musl_include)
set(ios_flags "-nostdlibinc -D_GNU_SOURCE -idirafter ${musl_include}")
string(APPEND ios_flags " -isystem ${CMAKE_CURRENT_LIST_DIR}/ios/include")
set(CMAKE_C_FLAGS_INIT "${ios_flags}")
set(CMAKE_OBJC_FLAGS_INIT "${ios_flags}")
foreach(lang CXX OBJCXX)
  set(CMAKE_${lang}_FLAGS_INIT
    "-nostdinc++ -isystem ${libcxx_include} -D_LIBCPP_HAS_NO_LOCALIZATION ${ios_flags}")
endforeach()
foreach(kind SHARED MODULE EXE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld")
endforeach()
