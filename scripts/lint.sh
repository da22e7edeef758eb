#!/bin/bash
# lint.sh BUILD: everything that can be said of the sources without running them. BUILD is a configured Linux build,
# for its compile commands. Says all that is wrong, then fails.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

build=${1:?usage: lint.sh BUILD}
jobs=${JOBS:-$(nproc)}
bad=0

# step WHAT COMMAND...: says what is looked at, and goes on after a finding.
step() {
  local what=$1 started=$SECONDS
  shift
  echo "lint: $what"
  if ! "$@"; then
    echo "lint: $what: findings above" >&2
    bad=1
  elif ((SECONDS - started > 5)); then
    echo "lint: $what: $((SECONDS - started)) s"
  fi
}

# Files of ours that exist: committed or about to be.
ours() {
  git ls-files -z --cached --others --exclude-standard -- "$@" |
    while IFS= read -r -d '' file; do
      if [[ -f $file ]]; then printf '%s\0' "$file"; fi
    done
}

layout() { ours '*.hpp' '*.h' '*.cpp' '*.mm' '*.m' | xargs -0 -r -n 32 -P "$jobs" clang-format-19 --dry-run -Werror; }

scripts() { ours '*.sh' .ci/run | xargs -0 -r shellcheck; }

# The analyser says how many warnings it suppressed; only what it found is of interest.
analysis() {
  local found
  found=$(run-clang-tidy-19 -quiet -j "$jobs" -p "$build" '/QVSandbox/QVSandbox/.*\.(cpp|mm)$' 2>&1) && return 0
  grep -vE '^[0-9]+ warnings? |^clang-tidy-19 |^Suppressed |^\[ *[0-9]+/' <<<"$found" >&2
  return 1
}

# What nobody but the machine that it was written on can use.
machine_paths() {
  local found
  found=$(git grep --untracked -nIE '(^|[^[:alnum:]_.])/(work|home|Users)/[a-z]|/tmp/build' -- . ':!scripts' ':!tests/ios') ||
    return "$(($? != 1))"
  echo "$found" >&2
  return 1
}

step "headers that the library includes" scripts/check-includes.sh QVSandbox/QVSandbox
step "scripts" scripts
step "layout" layout
step "paths of this machine" machine_paths
step "static analysis of the library" analysis
exit "$bad"
