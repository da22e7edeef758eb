set(QVSANDBOX_SANITIZER "" CACHE STRING "none, address (with UBSan) or thread")
set_property(CACHE QVSANDBOX_SANITIZER PROPERTY STRINGS "" address thread)

# `function` is off: a method's implementation is called through the type that its encoding promises,
# and the instrumentation knows nothing of Objective-C methods.
# Shared runtime: the library is put into processes that were not linked with it.
# LLVM's linker: a program takes a fifth of the time, and there are many.
if(QVSANDBOX_SANITIZER STREQUAL "address")
  add_compile_options(-fsanitize=address,undefined -fno-sanitize=function,vptr -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined -fuse-ld=lld)
elseif(QVSANDBOX_SANITIZER STREQUAL "thread")
  add_compile_options(-fsanitize=thread -fno-omit-frame-pointer)
  add_link_options(-fsanitize=thread -fuse-ld=lld)
elseif(QVSANDBOX_SANITIZER)
  message(FATAL_ERROR "QVSANDBOX_SANITIZER is '${QVSANDBOX_SANITIZER}'; it may be empty, address or thread")
endif()
