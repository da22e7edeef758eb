# shellcheck shell=bash disable=SC2119
# What else may be given to the check.
# shellcheck source=tests/ios/small.sh
source "$QV_SOURCE_DIR/tests/ios/small.sh"

# refused_file SENTENCE FILE: as QVSandbox.framework's binary refused with the sentence.
refused_file() {
  checked=$2
  refused "$1" check
}

no_binary() {
  printf 'QVSandboxInit\n' >exports
  refused_file 'nowhere: does not exist' nowhere
  : >empty
  refused_file 'empty: is no whole Mach-O file: ' empty
  echo 'some text' >text
  refused_file 'text: is no whole Mach-O file: ' text
  refused_file ': is no Mach-O file' "$QV_CHECK"
  echo 'int x;' >b.c
  clang-19 --target=armv7-apple-ios9.0 -c b.c -o thirty-two.o
  refused_file 'thirty-two.o: holds a slice that is not for a 64-bit processor' thirty-two.o
  clang-19 --target=arm64-apple-ios12.0 -c b.c -o object.o
  refused_file 'object.o (arm64): is no dynamic library' object.o
}

# refused_bytes FILE WHAT: the check says no with a sentence, and does not crash.
refused_bytes() {
  local status=0
  "$QV_CHECK" --exports exports --stubs "$stubs" --stubs "$QV_FRAMEWORKS" --texts texts.json "$1" >out 2>err || status=$?
  if ((status != 1)) || [[ ! -s err ]]; then
    echo "$2: status $status, said: $(cat err)" >&2
    return 1
  fi
}

truncated() {
  framework
  local size length
  size=$(stat -c %s QVSandbox.framework/QVSandbox)
  for length in 1 3 4 8 27 28 31 32 40 100 500 1000 2000 3000 4095 4096 8192 16384 $((size / 2)) $((size - 4096)) \
    $((size - 100)) $((size - 1)); do
    head -c "$length" QVSandbox.framework/QVSandbox >part
    refused_bytes part "$length of $size bytes"
  done
}

# Not every byte of the header and the commands, which would take long.
mutated() {
  framework
  local status=0
  python3 - "$QV_CHECK" --exports exports --stubs "$stubs" --stubs "$QV_FRAMEWORKS" --texts texts.json bad <<'END' || status=$?
import struct, subprocess, sys
data = open("QVSandbox.framework/QVSandbox", "rb").read()
end = 32 + struct.unpack_from("<I", data, 20)[0]
failed = 0
for at in range(0, end, 11):
    changed = bytearray(data)
    changed[at] = 0xff if (at // 11) % 2 else (changed[at] + 1) % 256
    open("bad", "wb").write(changed)
    done = subprocess.run(sys.argv[1:], capture_output=True, text=True, errors="replace")
    # A byte of the header is under the signature, so no change passes.
    if done.returncode != 1 or not done.stderr.strip():
        print(f"byte {at}: status {done.returncode}: {done.stderr[-300:]}", file=sys.stderr)
        failed = 1
sys.exit(failed)
END
  return "$status"
}

promises() {
  framework
  texts_are() { printf '%s' "$1" >texts.json; }
  texts_are '{"texts": ["a", "b", "a"]}'
  refused 'texts.json: "texts" names "a" twice' check
  texts_are '{"texts": ["a", 1]}'
  refused 'texts.json: "texts" holds something else than a text: 1' check
  texts_are '{"texts": [""]}'
  refused 'texts.json: "texts" holds something else than a text: ""' check
  texts_are '{"texts": "a"}'
  refused 'texts.json: "texts" is no array' check
  texts_are '{"selector": []}'
  refused 'texts.json: has a key "selector" that nobody knows' check
  texts_are '["a"]'
  refused 'texts.json: holds no JSON object' check
  texts_are '{"texts": ['
  refused 'texts.json: ' check
  rm texts.json
  refused 'texts.json: cannot be opened' check
  texts_are '{}'
  rm exports
  refused 'exports: cannot be opened' check
  echo QVSandboxInit >exports
  mkdir none
  stubs=none
  refused 'none: holds no stub for the linker' check
  echo 'no stub' >none/a.tbd
  refused 'none/a.tbd: is no stub for the linker: ' check
}

slices() {
  framework
  cp QVSandbox.framework/QVSandbox phone
  framework --target=x86_64-apple-ios12.0-simulator -isysroot "$QV_SOURCE_DIR/cmake/ios/iPhoneSimulator.sdk"
  llvm-lipo-19 -create phone QVSandbox.framework/QVSandbox -output both
  checked=both check
  echo '[[gnu::constructor(101)]] static void more() { swizzleMethod(); }' >>a.cpp
  framework --target=x86_64-apple-ios12.0-simulator -isysroot "$QV_SOURCE_DIR/cmake/ios/iPhoneSimulator.sdk"
  llvm-lipo-19 -create phone QVSandbox.framework/QVSandbox -output both
  refused_file 'both (x86_64): has 3 initialisers, expected 2' both
  head -c 20000 both >part
  refused_file 'part: is no whole Mach-O file: ' part
}
