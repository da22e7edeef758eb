# Objective-C as Debian has it: GCC's runtime, GNUstep's Foundation, libBlocksRuntime's <Block.h>.
if(CMAKE_CROSSCOMPILING)
  file(GLOB gcc_folder "${CMAKE_SYSROOT}/usr/lib/gcc/${CMAKE_CXX_COMPILER_TARGET}/*")
  set(gcc_include "${gcc_folder}/include")
else()
  execute_process(COMMAND gcc -print-file-name=include OUTPUT_VARIABLE gcc_include OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
if(NOT EXISTS "${gcc_include}/objc/runtime.h")
  message(FATAL_ERROR "objc/runtime.h not found beside GCC's headers; run scripts/setup.sh")
endif()

# CMake knows how Linux names and finds shared libraries for C and C++ only.
foreach(lang OBJC OBJCXX)
  foreach(flag SONAME_${lang}_FLAG RUNTIME_${lang}_FLAG RUNTIME_${lang}_FLAG_SEP RPATH_LINK_${lang}_FLAG)
    string(REPLACE ${lang} CXX like "CMAKE_SHARED_LIBRARY_${flag}")
    set(CMAKE_SHARED_LIBRARY_${flag} "${${like}}")
    string(REPLACE SHARED_LIBRARY EXECUTABLE other "CMAKE_SHARED_LIBRARY_${flag}")
    string(REPLACE SHARED_LIBRARY EXECUTABLE like "${like}")
    set(${other} "${${like}}")
  endforeach()
endforeach()

set(QV_OBJC_FLAGS
  -fobjc-runtime=gcc
  -fobjc-exceptions -fexceptions # the first alone drops @catch without a word
  -fblocks
  -fconstant-string-class=NSConstantString
  -D_NATIVE_OBJC_EXCEPTIONS -DGNUSTEP -DGNUSTEP_BASE_LIBRARY=1
  -pthread)

# libQVDevice stands before all of these (see qv_link_platform): it has the block runtime and Foundation's path functions
# that the whole process is to use.
find_library(QV_BLOCKS BlocksRuntime REQUIRED)
find_library(QV_GNUSTEP_BASE gnustep-base REQUIRED)
if(CMAKE_CROSSCOMPILING)
  set(QV_OBJC "${gcc_folder}/libobjc.so")
else()
  execute_process(COMMAND gcc -print-file-name=libobjc.so OUTPUT_VARIABLE QV_OBJC OUTPUT_STRIP_TRAILING_WHITESPACE)
endif()
set(QV_FOUNDATION_LIBS ${QV_BLOCKS} ${QV_GNUSTEP_BASE} ${QV_OBJC})

# The flags of a house written in Objective-C(++), with the device's headers.
function(qv_objc target)
  target_compile_options(${target} PRIVATE
    "$<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:${QV_OBJC_FLAGS}>"
    "$<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:SHELL:-isystem ${CMAKE_SYSROOT}/usr/include/GNUstep>"
    "$<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:SHELL:-idirafter ${gcc_include}>")
  target_include_directories(${target} PRIVATE "${PROJECT_SOURCE_DIR}/device/include" "${PROJECT_SOURCE_DIR}/sdk/include")
  target_link_libraries(${target} PRIVATE qv_warnings)
endfunction()

# Links a program with the device and the Foundation under it. The device must come first of all libraries, and CMake
# sorts what it knows to be libraries: hence the options.
function(qv_link_platform target)
  target_link_options(${target} PRIVATE "$<TARGET_FILE:QVDevice>")
  target_link_libraries(${target} PRIVATE ${QV_FOUNDATION_LIBS})
  add_dependencies(${target} QVDevice)
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "$<TARGET_FILE:QVDevice>")
  set_property(TARGET ${target} APPEND PROPERTY BUILD_RPATH "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
endfunction()
