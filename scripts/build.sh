#!/bin/bash
# build.sh PRESET JOBS: configures and builds one preset. One line of progress on a terminal, else
# none; when it fails, what the tools said is shown whole.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

preset=$1
jobs=$2
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
echo "Building preset $preset"
if [[ -t 1 ]]; then
  cmake --build --preset "$preset" --parallel "$jobs" # ninja rewrites its one line
else
  quietly cmake --build --preset "$preset" --parallel "$jobs"
fi
