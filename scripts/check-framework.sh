#!/bin/bash
# check-framework.sh FRAMEWORK EXPORTS STUBS...: what the loader of an iPhone and the framework's users will find in it.
# EXPORTS lists the exported C names; STUBS are the folders with the linker's stubs. Says everything that is wrong.
set -euo pipefail

framework=${1:?usage: check-framework.sh FRAMEWORK EXPORTS STUBS...}
exports=${2:?}
shift 2
stubs=("$@")

name=$(basename "$framework" .framework)
binary=$framework/$name
llvm=${LLVM_SUFFIX--19}
bad=0

wrong() {
  echo "$framework: $*" >&2
  bad=1
}
expect() { # WHAT EXPECTED FOUND
  if [[ $2 != "$3" ]]; then wrong "$1 is \"$3\", expected \"$2\""; fi
}
objdump() { "llvm-objdump$llvm" --macho "$@" "$binary"; }
command_field() { # COMMAND FIELD: that field of the first load command of that name
  awk -v command="$1" -v field="$2" '$1 == "cmd" { on = $2 == command } on && $1 == field { print $2; exit }' <<<"$commands"
}

if [[ ! -f $binary ]]; then
  wrong "holds no file $name"
  exit 1
fi
expect "the list of files" "Info.plist $name" "$(cd "$framework" && find . -mindepth 1 -printf '%P\n' | sort | xargs)"

headers=$("llvm-readobj$llvm" --file-headers "$binary")
expect "the format" "Mach-O arm64" "$(sed -n 's/^Format: //p' <<<"$headers")"
expect "the kind of file" "DynamicLibrary" "$(sed -n 's/^ *FileType: \([A-Za-z]*\).*/\1/p' <<<"$headers")"
if ! grep -q MH_TWOLEVEL <<<"$headers"; then wrong "leaves open which library each symbol comes from"; fi

commands=$(objdump --private-headers)
expect "the platform" ios "$(command_field LC_BUILD_VERSION platform)"
expect "the oldest release" 12.0 "$(command_field LC_BUILD_VERSION minos)"
expect "the install name" "@rpath/$name.framework/$name" "$(command_field LC_ID_DYLIB name)"
for key in CFBundleExecutable:$name CFBundlePackageType:FMWK MinimumOSVersion:12.0 CFBundleVersion:4.2.0.18; do
  value=$(grep -A1 -F "<key>${key%%:*}</key>" "$framework/Info.plist" | sed -n 's/.*<string>\(.*\)<\/string>.*/\1/p')
  expect "${key%%:*} in Info.plist" "${key#*:}" "$value"
done

expect "the list of exported symbols" "$(sed 's/^/_/' "$exports" | sort | xargs)" \
  "$(objdump --exports-trie | awk '/^0x/ { print $2 }' | sort | xargs)"

# Each import under the library that exports it, as the stubs say.
imports=$({ objdump --bind && objdump --lazy-bind; } | awk '$1 ~ /^__/ { print $(NF - 1), $NF }' | sort -u)
while read -r library symbol; do
  stub=$(find "${stubs[@]}" -name "$library.tbd" -print -quit)
  if [[ -z $stub ]] || ! grep -qE "[[ ,]${symbol//[+.\$]/\\&}[] ,]|[[ ,]${symbol//[+.\$]/\\&}\$" "$stub"; then
    wrong "imports $symbol from $library, which no stub lists"
  fi
done <<<"$imports"
expect "the number of symbols that any library may provide" 0 "$(objdump --weak-bind | grep -c '^__' || true)"

# Whoever owns a class that is looked up by name at load is loaded first, whether or not a symbol is imported from it.
used=$(objdump --dylibs-used)
for library in CoreData.framework/CoreData Foundation.framework/Foundation UIKit.framework/UIKit \
  @rpath/Zorbel.framework/Zorbel libobjc.A.dylib; do
  if ! grep -qF "$library" <<<"$used"; then wrong "does not name $library among the libraries to load first"; fi
done

# The initialisers: the library makes itself known to the runtime, then QVSandboxInit runs, and nothing else does.
words=$("llvm-objdump$llvm" --full-contents --section=__mod_init_func "$binary" |
  awk '/^ [0-9a-f]+ / { for (i = 2; i <= 5 && $i ~ /^[0-9a-f]+$/ && length($i) == 8; i++) print $i }')
pointers=()
while read -r low && read -r high; do
  pointers+=("${high:6:2}${high:4:2}${high:2:2}${high:0:2}${low:6:2}${low:4:2}${low:2:2}${low:0:2}")
done <<<"$words"
expect "the number of initialisers" 2 "${#pointers[@]}"
entry=$("llvm-nm$llvm" --defined-only --extern-only "$binary" | awk '$3 == "_QVSandboxInit" { print $1 }')
expect "the address of the last initialiser" "$entry" "${pointers[${#pointers[@]} - 1]:-none}"

# Nothing tells where the framework was built.
paths=$("llvm-strings$llvm" --all "$binary" | grep -E '(^|[^[:alnum:]@.])/(home|root|tmp|work|Users|build|mnt|src|var)/' |
  head -3 || true)
if [[ -n $paths ]]; then wrong "tells where it was built: $paths"; fi

exit "$bad"
