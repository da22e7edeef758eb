# shellcheck shell=bash
# What a source of the library may include.

check() { "$QV_SOURCE_DIR/scripts/check-includes.sh" library; }
source_is() { printf '%b\n' "$1" >library/a.cpp; }
mkdir library

allowed() {
  mkdir library/part
  touch library/part/b.hpp library/c.hpp
  source_is '#include <string> // a comment\n#include "part/b.hpp"'
  echo '#include "../c.hpp"' >library/part/d.cpp
  check
}

banned() {
  local header
  for header in errno.h fcntl.h sys/stat.h pthread.h cerrno cstdio mutex thread chrono locale iostream filesystem; do
    source_is "#include <$header>"
    refused "includes <$header>, which the library may not use" check
  done
}

hidden() {
  local text
  source_is '#if 0\n#include <mutex>\n#endif'
  refused "includes <mutex>, which the library may not use" check
  source_is '# /* why */ include /* not */ <mutex>'
  refused "includes <mutex>, which the library may not use" check
  source_is '%:include <mutex>'
  refused "spells a directive with a digraph" check
  for text in '#in\\\nclude <mutex>' '#define HEADER <mutex>\n#include HEADER' '#import <string>' \
    '#include_next <string>' 'import <mutex>;'; do
    source_is "$text"
    refused "has a directive that is not a plain #include" check
  done
}

outside() {
  touch outside.hpp
  source_is '#include "../outside.hpp"'
  refused 'includes "../outside.hpp", which is not a file of the library' check
  source_is '#include "UIKit/UIKit.h"'
  refused 'includes "UIKit/UIKit.h", which is not a file of the library' check
}

nothing() {
  refused "holds no source" check
}
