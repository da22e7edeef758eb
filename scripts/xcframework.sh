#!/bin/bash
# xcframework.sh OUT DEVICE ARM64 X86_64: QVSandbox.xcframework of three builds: the device's and the simulator's two,
# which become one universal framework. Each build is a folder with QVSandbox.framework and its .dSYM.
set -euo pipefail

out=${1:?usage: xcframework.sh OUT DEVICE ARM64 X86_64}
device=${2:?}
arm64=${3:?}
x86_64=${4:?}
name=QVSandbox
binary=$name.framework/$name
debug=$name.framework.dSYM/Contents/Resources/DWARF/$name
if ! lipo=$(command -v llvm-lipo-19 || command -v lipo); then
  echo "xcframework.sh: neither llvm-lipo-19 nor lipo is there; run scripts/setup.sh" >&2
  exit 1
fi

work=$(mktemp -d "$(dirname "$out")/.xcframework.XXXXXX")
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"

place() { # BUILD SLICE
  mkdir -p "$work/$2/dSYMs"
  cp -R "$1/$name.framework" "$work/$2/"
  cp -R "$1/$name.framework.dSYM" "$work/$2/dSYMs/"
}

place "$device" ios-arm64

# The older release of the two stands in the Info.plist, as there is one for both.
simulator=$work/ios-arm64_x86_64-simulator
place "$arm64" "${simulator##*/}"
cp -R "$x86_64/$name.framework.dSYM" "$simulator/dSYMs/"
cp "$x86_64/$name.framework/Info.plist" "$simulator/$name.framework/"
"$lipo" -create "$arm64/$binary" "$x86_64/$binary" -output "$simulator/$binary"
"$lipo" -create "$arm64/$debug" "$x86_64/$debug" -output "$simulator/dSYMs/$debug"

# slice FOLDER VARIANT ARCHITECTURE...
slice() {
  local folder=$1 variant=$2 architecture
  shift 2
  printf '    <dict>\n'
  printf '      <key>%s</key>\n      <string>%s</string>\n' \
    BinaryPath "$binary" DebugSymbolsPath dSYMs LibraryIdentifier "$folder" LibraryPath "$name.framework"
  printf '      <key>SupportedArchitectures</key>\n      <array>\n'
  for architecture; do printf '        <string>%s</string>\n' "$architecture"; done
  printf '      </array>\n      <key>SupportedPlatform</key>\n      <string>ios</string>\n'
  if [[ -n $variant ]]; then
    printf '      <key>SupportedPlatformVariant</key>\n      <string>%s</string>\n' "$variant"
  fi
  printf '    </dict>\n'
}

{
  cat <<'END'
<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
  <key>AvailableLibraries</key>
  <array>
END
  slice ios-arm64 '' arm64
  slice ios-arm64_x86_64-simulator simulator arm64 x86_64
  cat <<'END'
  </array>
  <key>CFBundlePackageType</key>
  <string>XFWK</string>
  <key>XCFrameworkFormatVersion</key>
  <string>1.0</string>
</dict>
</plist>
END
} >"$work/Info.plist"

rm -rf "$out"
mv "$work" "$out"
