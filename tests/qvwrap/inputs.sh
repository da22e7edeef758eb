#!/bin/bash
# inputs.sh CLANG LLVM_BIN OUT: makes in OUT what the tests wrap, executables of an app and frameworks, with this
# repository's own stubs in the place of Apple's SDK.
set -euo pipefail

clang=${1:?usage: inputs.sh CLANG LLVM_BIN OUT}
llvm=${2:?}
out=${3:?}
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")

rm -rf "$out"
mkdir -p "$out"
cd "$out"

# build TARGET OUTPUT OPTIONS...
build() {
  "$clang" --target="$1" -isysroot "$here/stubs" -nostdlibinc -fuse-ld=lld -Os -o "$2" "${@:3}"
}
host() { build "$1" "$2" "$here/Host.m" -framework UIKit -lobjc "${@:3}"; }
library() {
  mkdir -p "$2"
  build "$1" "$2/QVSandbox" "$here/Library.c" -dynamiclib -framework Zorbel \
    -install_name @rpath/QVSandbox.framework/QVSandbox -current_version 4.2.0 -compatibility_version 1.0.0
}

room=-Wl,-headerpad,0x1000
device=arm64-apple-ios12.0
simulator=apple-ios12.0-simulator

host $device host $room
host $device host_with_rpath $room -rpath /usr/lib/swift -rpath @executable_path/Frameworks
host $device host_with_loader_rpath $room -rpath @loader_path/Frameworks
host $device host_with_slash_rpath $room -rpath @executable_path/Frameworks/
host $device host_signed $room -Wl,-adhoc_codesign
host arm64-apple-ios14.0 host_chained $room
host arm64-apple-ios9.0 host_old $room
for arch in arm64 x86_64; do host $arch-$simulator host_simulator_$arch $room -Wl,-no_adhoc_codesign; done
"$llvm/llvm-lipo" -create host_simulator_arm64 host_simulator_x86_64 -output host_simulator
build $device not_a_host "$here/Library.c" -dynamiclib -framework Zorbel

xc=QVSandbox.xcframework
library $device $xc/ios-arm64/QVSandbox.framework
for arch in arm64 x86_64; do library $arch-$simulator $arch; done
both=$xc/ios-arm64_x86_64-simulator/QVSandbox.framework
mkdir -p "$both"
"$llvm/llvm-lipo" -create arm64/QVSandbox x86_64/QVSandbox -output "$both/QVSandbox"
for framework in "$xc"/*/QVSandbox.framework; do cp "$here/Framework.plist" "$framework/Info.plist"; done
cp "$here/XCFramework.plist" $xc/Info.plist

# Where the fuzzers begin.
mkdir -p corpus/macho corpus/archive Payload/Notes.app
cp host* corpus/macho
cp host_simulator_x86_64 Payload/Notes.app/Notes
echo '<plist version="1.0"><dict><key>CFBundleExecutable</key><string>Notes</string></dict></plist>' >Payload/Notes.app/Info.plist
zip -q -X -r corpus/archive/deflated Payload
zip -q -X -r -D -0 corpus/archive/stored Payload
zip -q -X -r -fd corpus/archive/described Payload
