#!/bin/bash
# test.sh PRESET: runs a preset's tests. What passed is counted, what did not is shown.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

preset=${1:?usage: test.sh PRESET}
if [[ -t 1 ]]; then
  ctest --preset "$preset" --progress
else
  ctest --preset "$preset" | grep --line-buffered -vE '^ *Start +[0-9]+: | Passed +[0-9.]+ sec$'
fi
