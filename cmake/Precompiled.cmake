# Most of the time that a source takes to compile goes into headers that nearly all of its neighbours include: these are
# compiled once. Each source includes what it needs all the same. With a compiler cache they are no gain, since what it has
# seen is not compiled at all; and so the sources are seen to include what they need.
if(CMAKE_CXX_COMPILER_LAUNCHER)
  set(quickly OFF)
else()
  set(quickly ON)
endif()
option(QV_COMPILE_QUICKLY "Precompile headers, and compile the tests and qvdevice with little optimisation" ${quickly})

# qv_precompile(TARGET HEADER...): the headers that most of the target's sources include.
function(qv_precompile target)
  if(QV_COMPILE_QUICKLY)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

# qv_compile_tool_quickly(TARGET): for a program that waits for others most of its time, where somebody with a fresh clone
# waits for the compiler.
function(qv_compile_tool_quickly target)
  if(QV_COMPILE_QUICKLY)
    target_compile_options(${target} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O0> -g1)
  endif()
endfunction()

# One that only Objective-C++ understands.
set(QV_UIKIT_HEADER "$<$<COMPILE_LANGUAGE:OBJCXX>:<UIKit/UIKit.h$<ANGLE-R>>")
