#!/bin/bash
# build.sh PRESET JOBS [TARGET...]: configures and builds one preset, or some targets of it. One line of progress on a
# terminal, else none; when it fails, what the tools said is shown whole.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

preset=$1
jobs=$2
shift 2
what="preset $preset"
targets=()
if (($# > 0)); then
  what="$* of $what"
  targets=(--target "$@")
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT

quietly() {
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    echo "build.sh: preset $preset: \`$*\` failed; its messages stand above" >&2
    exit 1
  fi
}

quietly cmake --preset "$preset"
echo "Building $what"
if [[ -t 1 ]]; then
  cmake --build --preset "$preset" --parallel "$jobs" "${targets[@]}" # ninja rewrites its one line
else
  quietly cmake --build --preset "$preset" --parallel "$jobs" "${targets[@]}"
fi
