# Warnings are errors everywhere. What a house adds or relaxes stands in its own CMakeLists.txt.
add_library(qv_warnings INTERFACE)
target_compile_options(qv_warnings INTERFACE -Wall -Wextra -Wshadow -Werror
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wpedantic>
  # Foundation's headers are GNU C throughout (#include_next, statement expressions), an IMP is cast to and from every
  # method's own type, and options are or-ed from several enumerations: Objective-C's ways, not mistakes.
  $<$<COMPILE_LANGUAGE:OBJC,OBJCXX>:-Wno-cast-function-type-mismatch>
  $<$<COMPILE_LANGUAGE:OBJCXX>:-Wno-deprecated-anon-enum-enum-conversion>)
