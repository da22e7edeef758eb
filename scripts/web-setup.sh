#!/bin/bash
# Installs what the tests of the pages need and this machine lacks: programs of scripts/packages-web.txt, and the npm
# packages of tests/web/package-lock.json into build/web. Says nothing and changes nothing when all is there.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

fail() {
  echo "web-setup.sh: $*" >&2
  exit 1
}

missing=()
while read -r name _; do
  program=$name
  if [[ $name == nodejs ]]; then program=node; fi
  if [[ -n $name && $name != \#* ]] && ! command -v "$program" >/dev/null; then missing+=("$name"); fi
done <scripts/packages-web.txt

log=$(mktemp)
trap 'rm -f "$log"' EXIT
# run WHAT COMMAND...: shows what the command says only when it fails.
run() {
  local what=$1
  shift
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    fail "$what failed; its messages stand above"
  fi
}

if ((${#missing[@]} > 0)); then
  as_root=()
  if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "these packages are missing, and installing them takes root or sudo: ${missing[*]}"
    as_root=(sudo)
  fi
  echo "Installing ${#missing[@]} Debian packages: ${missing[*]}"
  apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300)
  run "apt-get update" "${apt[@]}" update
  run "apt-get install" "${apt[@]}" install --yes --no-install-recommends "${missing[@]}"
fi

wanted=$(cat tests/web/package.json tests/web/package-lock.json tests/web/.npmrc | sha256sum)
if [[ -e build/web/.complete && $(<build/web/.complete) == "$wanted" ]]; then exit 0; fi
mkdir -p build/web
cp tests/web/package.json tests/web/package-lock.json tests/web/.npmrc build/web/
run "npm ci" npm ci --prefix build/web
printf '%s\n' "$wanted" >build/web/.complete
