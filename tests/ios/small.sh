# shellcheck shell=bash disable=SC2034
# A small framework that keeps every promise of the large one, and the check of it.

cat >a.cpp <<'END'
extern "C" {
void* objc_lookUpClass(const char*);
[[gnu::visibility("default")]] void swizzleMethod() { objc_lookUpClass("NSObject"); }
[[gnu::used]] const char* const said[] = {"setDelegate:", "Sandboxing NSArray"};
}
namespace {
[[gnu::constructor(101)]] static void load() { swizzleMethod(); }
}
extern "C" [[gnu::visibility("default"), gnu::constructor(102)]] void QVSandboxInit() { swizzleMethod(); }
END
cat >texts.json <<'END'
{"selectors": ["setDelegate:"], "classes": ["NSObject"], "texts": ["Sandboxing NSArray"], // and nothing
 "absent": ["invalid message send"]}
END

sdk=(-framework Zorbel)
stubs=$QV_SOURCE_DIR/cmake/ios/iPhoneOS.sdk

# unstripped: QVSandbox.framework as it was before it was stripped. Its debug symbols are in linked/QVSandbox.dSYM.
unstripped() { cp linked/QVSandbox QVSandbox.framework/QVSandbox; }

# framework OPTIONS...: QVSandbox.framework from a.cpp; the last option of a kind wins.
framework() {
  rm -rf linked
  mkdir -p QVSandbox.framework linked
  printf 'QVSandboxInit\nswizzleMethod\n' >exports
  printf '_QVSandboxInit\n_swizzleMethod\n' >exports.macho
  cp "$QV_BUILT/QVSandbox.framework/Info.plist" QVSandbox.framework/
  link -g -O1 -fexceptions a.cpp -o linked/QVSandbox \
    -install_name @rpath/QVSandbox.framework/QVSandbox -framework CoreData -framework Foundation -framework Security \
    -framework UIKit -lobjc -lc++ -Wl,-exported_symbols_list,exports.macho -Wl,-adhoc_codesign \
    -Wl,-current_version,4.2.0 -Wl,-compatibility_version,1.0.0 "${sdk[@]}" "$@"
  unstripped
  llvm-strip-19 -S -x QVSandbox.framework/QVSandbox
}

# check OPTIONS...: of the framework, or of the last option when that is a path.
check() {
  "$QV_CHECK" --exports exports --stubs "$stubs" --stubs "$QV_FRAMEWORKS" --texts texts.json "${checked:-QVSandbox.framework}" "$@"
}

# patch_at PATTERN OFFSET BYTES [FILE]: overwrites what is so far behind where the bytes of PATTERN first stand.
patch_at() {
  python3 - "$@" <<'END'
import sys
pattern, offset, new = (sys.argv[i].encode().decode("unicode_escape").encode("latin1") for i in (1, 2, 3))
path = sys.argv[4] if len(sys.argv) > 4 else "QVSandbox.framework/QVSandbox"
data = bytearray(open(path, "rb").read())
at = data.index(pattern) + int(offset)
assert data[at:at + len(new)] != new
data[at:at + len(new)] = new
open(path, "wb").write(data)
END
}
