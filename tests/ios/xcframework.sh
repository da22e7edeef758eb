# shellcheck shell=bash disable=SC2119
# A small xcframework that keeps every promise, and one that breaks each.
# shellcheck source=tests/ios/small.sh
source "$QV_SOURCE_DIR/tests/ios/small.sh"

# build FOLDER OPTIONS...: a framework and its debug symbols, as the large one is built.
build() {
  local folder=$1
  shift
  mkdir "$folder"
  framework "$@"
  mv linked/QVSandbox.dSYM "$folder/QVSandbox.framework.dSYM"
  mv QVSandbox.framework "$folder/"
}

simulator_info() { # FOLDER RELEASE
  sed -i "s/iPhoneOS/iPhoneSimulator/; s/>12\.0</>$2</" "$1/QVSandbox.framework/Info.plist"
}

xcframework() {
  local simulator=$QV_SOURCE_DIR/cmake/ios/iPhoneSimulator.sdk
  build device
  build arm64 --target=arm64-apple-ios14.0-simulator -isysroot "$simulator"
  simulator_info arm64 14.0
  build x86_64 --target=x86_64-apple-ios12.0-simulator -isysroot "$simulator"
  simulator_info x86_64 12.0
  "$QV_SOURCE_DIR/scripts/xcframework.sh" QVSandbox.xcframework device arm64 x86_64
}
checked=QVSandbox.xcframework

control() {
  local said
  xcframework
  said=$(check)
  if [[ $(grep -oE '\((arm64|x86_64)\): [0-9]+ bytes for iPhone(OS|Simulator) from 1[24]' <<<"$said" | sed 's/[0-9]* bytes //' | sort | xargs) != \
    "(arm64): for iPhoneOS from 12 (arm64): for iPhoneSimulator from 14 (x86_64): for iPhoneSimulator from 12" ]]; then
    echo "not every slice is told, but: $said" >&2
    return 1
  fi
}

lost_slice() {
  xcframework
  local binary=QVSandbox.xcframework/ios-arm64_x86_64-simulator/QVSandbox.framework/QVSandbox
  llvm-lipo-19 "$binary" -thin x86_64 -output thin
  mv thin "$binary"
  refused 'the list of architectures is "x86_64", expected "arm64 x86_64"' check
  rm -r QVSandbox.xcframework/ios-arm64_x86_64-simulator
  refused 'QVSandbox.xcframework/ios-arm64_x86_64-simulator/QVSandbox.framework: is no folder' check
}

wrong_slice() {
  xcframework
  rm -r QVSandbox.xcframework/ios-arm64/QVSandbox.framework
  cp -R arm64/QVSandbox.framework QVSandbox.xcframework/ios-arm64/
  refused 'the platform is "iPhoneSimulator", expected "iPhoneOS"' check
}

other_info() {
  xcframework
  cp QVSandbox.xcframework/Info.plist kept
  changed() { # FROM TO SENTENCE
    sed "s/$1/$2/" kept >QVSandbox.xcframework/Info.plist
    refused "$3" check
  }
  changed XFWK FMWK 'CFBundlePackageType is "FMWK", expected "XFWK"'
  changed '>1\.0<' '>2.0<' 'XCFrameworkFormatVersion is "2.0", expected "1.0"'
  changed '>simulator<' '>maccatalyst<' \
    'SupportedPlatformVariant of ios-arm64_x86_64-simulator is "maccatalyst", expected "simulator"'
  changed '>x86_64<' '>i386<' \
    'SupportedArchitectures of ios-arm64_x86_64-simulator is "arm64 i386", expected "arm64 x86_64"'
  changed '>ios<' '>tvos<' 'SupportedPlatform of ios-arm64 is "tvos", expected "ios"'
  changed '>dSYMs<' '>symbols<' 'DebugSymbolsPath of ios-arm64 is "symbols", expected "dSYMs"'
  changed '>ios-arm64<' '>ios-armv7<' 'the list of libraries is "Info.plist ios-arm64_x86_64-simulator ios-armv7", expected'
}

extra_file() {
  xcframework
  echo >QVSandbox.xcframework/notes.txt
  refused 'the list of files is "Info.plist ios-arm64 ios-arm64_x86_64-simulator notes.txt"' check
}

no_debug_symbols() {
  xcframework
  rm -r QVSandbox.xcframework/ios-arm64/dSYMs
  refused 'QVSandbox.xcframework/ios-arm64/dSYMs/QVSandbox.framework.dSYM/Contents/Resources/DWARF/QVSandbox: No such file or directory' check
}
