#!/bin/bash
# run-case.sh FILE CASE: runs one function of FILE in a folder of its own, with what every case needs.
set -euo pipefail

here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# refused SENTENCE COMMAND...: the command fails, and says SENTENCE.
refused() {
  local sentence=$1 said
  shift
  if said=$("$@" 2>&1); then
    echo "expected a refusal that says: $sentence" >&2
    return 1
  fi
  if ! grep -qF -- "$sentence" <<<"$said"; then
    printf 'expected a refusal that says: %s\nit said: %s\n' "$sentence" "$said" >&2
    return 1
  fi
}

# link OPTIONS...: a library of the sources and options given, as the framework is linked.
link() {
  # shellcheck disable=SC2086 # a command line, made to be split
  $QV_COMPILE -fuse-ld=lld -dynamiclib -fvisibility=hidden -F "$QV_FRAMEWORKS" "$@"
}

# shellcheck source=/dev/null
source "$here/$1"
"$2"
