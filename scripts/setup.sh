#!/bin/bash
# Installs what scripts/packages.txt lists and this machine lacks. Says nothing and changes nothing when all is there.
set -euo pipefail

here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")

fail() {
  echo "setup.sh: $*" >&2
  exit 1
}

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
  fail "the packages are Debian's, and this system has no dpkg and apt-get"
fi

packages=()
while read -r name _; do
  if [[ -n $name && $name != \#* ]]; then packages+=("$name"); fi
done <"$here/packages.txt"

# dpkg-query answers non-zero when it does not know one of the names, which is then missing as well.
installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' "${packages[@]}" 2>/dev/null || true)
missing=()
for name in "${packages[@]}"; do
  if ! grep -qxF "installed $name" <<<"$installed"; then missing+=("$name"); fi
done
if ((${#missing[@]} == 0)); then exit 0; fi

as_root=()
if ((EUID != 0)); then
  command -v sudo >/dev/null || fail "these packages are missing, and installing them takes root or sudo: ${missing[*]}"
  as_root=(sudo)
fi

log=$(mktemp)
trap 'rm -f "$log"' EXIT
run_apt() {
  if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 "$@" >"$log" 2>&1; then
    cat "$log" >&2
    fail "apt-get $1 failed; its messages stand above"
  fi
}

echo "Installing ${#missing[@]} Debian packages: ${missing[*]}"
run_apt update
run_apt install --yes --no-install-recommends "${missing[@]}"
