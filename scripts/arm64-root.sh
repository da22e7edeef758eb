#!/bin/bash
# Makes build/arm64-root from what scripts/packages-arm64.txt lists: arm64 libraries and headers for the cross build, and
# the emulator that runs it. The packages are fetched from Debian's archive, as this machine's sources name it and with its
# signatures checked, and unpacked; nothing is installed, and root is not needed. Says nothing when all is there.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

list=scripts/packages-arm64.txt
root=build/arm64-root
fail() {
  echo "arm64-root.sh: $*" >&2
  exit 1
}

[[ $(dpkg --print-architecture 2>/dev/null) == amd64 ]] ||
  fail "this is for amd64 machines with Debian; on an arm64 one \`make test\` runs the tests as arm64"

wanted=$(sha256sum "$list" scripts/arm64-root.sh)
if [[ -e $root/.complete && $(<"$root/.complete") == "$wanted" ]]; then exit 0; fi

packages=()
while read -r name _; do
  if [[ -n $name && $name != \#* ]]; then packages+=("$name"); fi
done <"$list"

# apt with a state of its own, for which this is an arm64 machine that can take amd64's packages too.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work"/{state/lists/partial,cache/archives/partial,debs}
touch "$work/state/status"
run_apt() {
  local log=$work/log
  if ! (cd "$work/debs" && DEBIAN_FRONTEND=noninteractive apt-get -qq \
    -o APT::Architecture=arm64 -o APT::Architectures::=arm64 -o APT::Architectures::=amd64 -o APT::Sandbox::User="$(id -un)" \
    -o Dir::State="$work/state" -o Dir::State::status="$work/state/status" -o Dir::Cache="$work/cache" \
    "$@" >"$log" 2>&1); then
    cat "$log" >&2
    fail "apt-get $1 failed; its messages stand above"
  fi
}

echo "Unpacking Debian packages into $root"
run_apt update
run_apt install --print-uris --no-install-recommends "${packages[@]}"
# Compilers and interpreters that some -dev package wants belong to a machine, not here.
mapfile -t needed < <(sed -nE "s/^'[^']*' ([^_]+)_.*/\1/p" "$work/log" |
  grep -E '^(lib|linux-libc-dev$|zlib1g|x11proto|xorg-sgml|xtrans|uuid-dev$|gnustep-base-common$|nlohmann-json3-dev$)' |
  grep -vE '^lib(perl|python|binutils|ctf|gprofng)')
((${#needed[@]} > 0)) || fail "apt-get names no package"
run_apt download "${needed[@]}" qemu-user-static:amd64

rm -rf "$root"
mkdir -p "$root"
for package in "$work"/debs/*.deb; do
  if [[ ${package##*/} == qemu-user-static_* ]]; then
    # The one program out of sixty.
    dpkg-deb --fsys-tarfile "$package" | tar -x -C "$root" --strip-components=3 ./usr/bin/qemu-aarch64-static
  else
    dpkg-deb --extract "$package" "$root"
  fi
done

# When a signal ends a program, the emulator adds a line to what the program said on standard error, where tests look for
# the program's own last words: it is made to add nothing.
emulator=$root/qemu-aarch64-static
said='qemu: uncaught target signal'
[[ $(grep -aoF "$said" "$emulator" | wc -l) == 1 ]] || fail "this emulator says something else when a signal ends a program"
LC_ALL=C sed -i "s/$said/\\x00${said:1}/" "$emulator"

# Links that lead to the top lead out of the folder.
while IFS= read -r -d '' link; do
  target=$(readlink "$link")
  ln -sfn "$(realpath --no-symlinks --relative-to="$(dirname "$link")" "$root$target")" "$link"
done < <(find "$root" -type l -lname '/*' -print0)

printf '%s\n' "$wanted" >"$root/.complete"
