#!/bin/bash
# check-includes.sh DIRECTORY: the sources under DIRECTORY include nothing but each other and those C++ headers that
# mean the same for every target. On a machine without Apple's SDK the C headers are another system's: their constants
# and layouts would compile without a word and be wrong on the phone. So would C++ headers that build on them
# (<mutex>, <thread>, <chrono>, <locale>, <iostream>, <cstdio>, <cerrno>...), which is why the list names what is
# allowed and not what is not.
set -euo pipefail

allowed='algorithm array atomic bit compare concepts cstddef cstdint exception functional initializer_list iterator
limits memory new numeric optional span string string_view tuple type_traits utility variant vector'

root=${1:?usage: check-includes.sh DIRECTORY, or --allowed to list what is}
if [[ $root == --allowed ]]; then
  tr ' ' '\n' <<<"$allowed"
  exit
fi
clang=${CLANG:-clang++-19}
found=0
bad=0

refuse() {
  echo "$1: $2" >&2
  bad=1
}

while IFS= read -r -d '' file; do
  found=1
  # Every directive of the file, also in branches that this target does not take, comments and splices resolved.
  directives=$("$clang" -x c++ -std=c++20 -fsyntax-only -Xclang -print-dependency-directives-minimized-source "$file" |
    tr -d '\r')
  while IFS= read -r line; do
    case $line in
    '#include <'*'>')
      header=${line#'#include <'}
      header=${header%'>'}
      if ! grep -qwF -- "$header" <<<"$allowed" || [[ $header == */* ]]; then
        refuse "$file" "includes <$header>, which the library may not use (see ${BASH_SOURCE[0]##*/})"
      fi
      ;;
    '#include "'*'"')
      header=${line#'#include "'}
      header=${header%'"'}
      target=
      for base in "$(dirname "$file")" "$root"; do
        if [[ -f $base/$header ]]; then target=$(realpath "$base/$header") && break; fi
      done
      if [[ $target != "$(realpath "$root")"/* ]]; then
        refuse "$file" "includes \"$header\", which is not a file of the library"
      fi
      ;;
    '#pragma'*import*) refuse "$file" "has a directive that is not a plain #include: $line" ;;
    '#define '* | '#if'* | '#elif'* | '#pragma '* | '#undef '*) ;;
    '#include'* | '#import'* | *'import '* | *'import<'* | '#embed'* | '#'*[\\])
      refuse "$file" "has a directive that is not a plain #include: $line"
      ;;
    esac
  done <<<"$directives"
  if grep -nE '^[[:space:]]*(%:|\?\?=)' "$file" >&2; then refuse "$file" "spells a directive with a digraph"; fi
done < <(find "$root" -type f \( -name '*.hpp' -o -name '*.h' -o -name '*.cpp' -o -name '*.mm' \) -print0)

if ((!found)); then refuse "$root" "holds no source"; fi
exit "$bad"
