#!/bin/bash
# run.sh FUZZER CORPUS: fuzzes for QV_FUZZ_SECONDS (10) from the kept inputs of CORPUS on, in a container of the device,
# outside which the fuzzer can write nothing: CORPUS stays as it is. With QV_FUZZ_KEEP naming a folder, the inputs that
# reached something new are left in its "found", and one that fails in its "failing".
set -euo pipefail

fuzzer=${1:?usage: run.sh FUZZER CORPUS}
corpus=${2:?usage: run.sh FUZZER CORPUS}
seconds=${QV_FUZZ_SECONDS:-10}

if [[ ! $seconds =~ ^[1-9][0-9]*$ ]]; then
  echo "run.sh: QV_FUZZ_SECONDS is \"$seconds\", which is no number of seconds" >&2
  exit 2
fi
if [[ -z $(find "$corpus" -type f -print -quit) ]]; then
  echo "run.sh: $corpus holds no input to begin with" >&2
  exit 2
fi

container=$(mktemp -d)
trap 'rm -rf "$container"' EXIT
mkdir "$container/found" "$container/failing"

# What the tests' preset sets, for who runs this by hand.
supp=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/../lsan.supp
export LSAN_OPTIONS=${LSAN_OPTIONS:-suppressions=$supp:print_suppressions=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1}

status=0
QVDEVICE_CONTAINER=$container "$fuzzer" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
  -artifact_prefix="$container/failing/" "$container/found" "$corpus" || status=$?

if [[ -n ${QV_FUZZ_KEEP:-} ]]; then
  mkdir -p "$QV_FUZZ_KEEP"
  cp -r "$container/found" "$container/failing" "$QV_FUZZ_KEEP"
fi
while IFS= read -r -d '' input; do
  echo "run.sh: the input that fails, in base64:"
  base64 "$input"
done < <(find "$container/failing" -type f -print0)
exit "$status"
