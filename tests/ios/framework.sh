# shellcheck shell=bash disable=SC2119
# A small framework that keeps every promise, and one that breaks each.
# shellcheck source=tests/ios/small.sh
source "$QV_SOURCE_DIR/tests/ios/small.sh"

control() {
  local said
  framework
  said=$(check)
  if ! grep -qE '\(arm64\): [0-9]+ bytes for iPhoneOS from 12\.0; 2 exports, [0-9]+ imports; fix-ups: [0-9]+ rebases, [0-9]+ binds, [0-9]+ lazy; 3 texts$' <<<"$said"; then
    echo "size and fix-ups are not told, but: $said" >&2
    return 1
  fi
}

# With fix-ups in chains, as newer releases have them, the initialisers are found and counted as well.
chained_fixups() {
  framework -Wl,-fixup_chains
  check
  echo '[[gnu::constructor(101)]] static void more() { swizzleMethod(); }' >>a.cpp
  framework -Wl,-fixup_chains
  refused 'has 3 initialisers, expected 2' check
}

extra_export() {
  echo 'extern "C" [[gnu::visibility("default")]] void more() {}' >>a.cpp
  framework -Wl,-exported_symbol,_more
  refused 'exports what is not on the list: _more' check
}

lost_export() {
  framework
  echo another >>exports
  refused 'does not export what is on the list: _another' check
}

reexport() {
  # llvm-strip refuses that command as well.
  framework -Wl,-reexport_library,"$QV_SOURCE_DIR/cmake/ios/iPhoneOS.sdk/usr/lib/libobjc.tbd" 2>/dev/null || true
  refused 'has a load command that does not belong there: LC_REEXPORT_DYLIB' check
}

newer_release() {
  framework --target=arm64-apple-ios13.0
  refused 'the oldest release is "13.0", expected "12.0"' check
}

other_platform() {
  framework
  patch_at '\x32\0\0\0\x20\0\0\0' 8 '\x03'
  refused 'is for platform number 3 on arm64, which is no target of the framework' check
}

install_name() {
  framework -install_name /usr/lib/QVSandbox
  refused 'the install name is "/usr/lib/QVSandbox", expected "@rpath/QVSandbox.framework/QVSandbox"' check
}

library_version() {
  framework -Wl,-current_version,4.3.0
  refused 'the current version is "4.3.0", expected "4.2.0"' check
}

search_path() {
  framework -Wl,-rpath,@loader_path/Frameworks
  refused 'has a load command that does not belong there: LC_RPATH' check
}

third_initialiser() {
  echo '[[gnu::constructor(101)]] static void more() { swizzleMethod(); }' >>a.cpp
  framework
  refused 'has 3 initialisers, expected 2' check
}

lost_initialiser() {
  sed -i 's/\[\[gnu::constructor(101)\]\]/[[gnu::used]]/' a.cpp
  framework
  refused 'has 1 initialisers, expected 2' check
}

wrong_last_initialiser() {
  sed -i 's/constructor(101)/constructor(103)/' a.cpp
  framework
  refused 'runs another initialiser after QVSandboxInit' check
}

code_at_exit() {
  echo '[[gnu::used, gnu::section("__DATA,__mod_term_func,mod_term_funcs")]] static void (*end)() = &swizzleMethod;' >>a.cpp
  framework
  refused 'runs code at exit: ' check
}

load_method() {
  echo '__attribute__((objc_root_class)) @interface Eager @end @implementation Eager + (void)load {} @end' >b.mm
  framework b.mm -Wl,-undefined,dynamic_lookup
  refused 'has a class with a +load, which runs before the initialisers' check
}

writable_code() {
  framework -Wl,-segprot,__DATA,rwx,rwx
  refused 'has a segment __DATA that can be written and executed' check
}

misplaced_code() {
  echo '__asm__(".section __DATA,__code,regular,pure_instructions; .no_dead_strip _more; _more: ret; .text");' >>a.cpp
  framework
  refused 'has code outside the segment of code: __DATA,__code' check
}

lost_text() {
  sed -i 's/Sandboxing NSArray/Sandboxing NSDictionary/' a.cpp
  framework
  refused 'does not hold the text "Sandboxing NSArray"' check
}

longer_text() {
  sed -i 's/"setDelegate:"/"sb_setDelegate:"/' a.cpp
  framework
  refused 'does not hold the selector "setDelegate:"' check
}

debug_text() {
  echo 'extern "C" [[gnu::used]] const char more[] = "now: invalid message send to it";' >>a.cpp
  framework
  refused 'holds "invalid message send", which is for debugging: now: invalid message send to it' check
}

build_path() {
  echo 'extern "C" [[gnu::used]] const char where[] = "/home/someone/QVSandbox.cpp";' >>a.cpp
  framework
  refused 'tells where it was built: /home/someone/QVSandbox.cpp' check
}

source_folder() {
  echo 'extern "C" [[gnu::used]] const char where[] = "in /opt/checkout/QVSandbox/a.cpp";' >>a.cpp
  framework
  check
  check --sources /opt/check
  refused 'tells where it was built: in /opt/checkout/QVSandbox/a.cpp' check --sources /opt/checkout
  refused 'tells where it was built: in /opt/checkout/QVSandbox/a.cpp' check --sources /opt/checkout/
}

debug_symbols() {
  framework
  unstripped
  refused 'symbols that only a debugger wants' check
}

no_sdk() {
  sdk=()
  framework
  refused 'does not name @rpath/Zorbel.framework/Zorbel among the libraries to load first' check
}

late_import() {
  echo 'extern "C" int pthread_mutex_lock(void*); [[gnu::used]] static int use() { return pthread_mutex_lock(nullptr); }' >>a.cpp
  framework -Wl,-undefined,dynamic_lookup
  refused 'imports _pthread_mutex_lock from whichever library has it at run time' check
}

any_provider() {
  sed -i 's/\[\[gnu::visibility("default")\]\] void swizzleMethod/[[gnu::weak, gnu::visibility("default")]] void swizzleMethod/' a.cpp
  framework
  refused 'has a symbol that any library may provide: _swizzleMethod' check
}

unlisted_import() {
  framework
  cp -R "$QV_SOURCE_DIR/cmake/ios/iPhoneOS.sdk" stubs
  sed -i 's/_objc_lookUpClass,//' stubs/usr/lib/libobjc.tbd
  stubs=stubs
  refused 'imports _objc_lookUpClass from /usr/lib/libobjc.A.dylib, whose stub does not list it for iPhoneOS on arm64' check
  rm stubs/usr/lib/libobjc.tbd
  refused 'imports _objc_lookUpClass from /usr/lib/libobjc.A.dylib, for which there is no stub' check
}

import_of_another_target() {
  framework
  cp -R "$QV_SOURCE_DIR/cmake/ios/iPhoneOS.sdk" stubs
  sed -i 's/ arm64-ios,//' stubs/usr/lib/libobjc.tbd
  stubs=stubs
  refused 'imports _objc_lookUpClass from /usr/lib/libobjc.A.dylib, whose stub does not list it for iPhoneOS on arm64' check
}

unsigned_binary() {
  framework -Wl,-no_adhoc_codesign
  refused 'has 0 load commands LC_CODE_SIGNATURE, expected 1' check
}

changed_after_signing() {
  framework
  patch_at 'Sandboxing NSArray' 0 's'
  refused 'has been changed after it was signed: page ' check
}

broken_signature() {
  framework
  patch_at '\xfa\xde\x0c\xc0' 0 '\0'
  refused 'has no signature where its load command says' check
}

encrypted() {
  framework
  patch_at '\x2c\0\0\0\x18\0\0\0' 16 '\x01'
  refused 'is encrypted' check
}

extra_file() {
  framework
  echo >QVSandbox.framework/notes.txt
  refused 'the list of files is "Info.plist QVSandbox notes.txt", expected "Info.plist QVSandbox"' check
}

no_info() {
  framework
  rm QVSandbox.framework/Info.plist
  refused 'QVSandbox.framework/Info.plist: cannot be opened' check
  echo 'no list' >QVSandbox.framework/Info.plist
  refused 'QVSandbox.framework/Info.plist: holds no property list that is a dictionary' check
}

other_info() {
  framework
  cp QVSandbox.framework/Info.plist kept
  changed() { # FROM TO SENTENCE
    sed "s/$1/$2/" kept >QVSandbox.framework/Info.plist
    refused "$3" check
  }
  changed '4\.2\.0\.18' 4.2.0.19 'CFBundleVersion is "4.2.0.19", expected "4.2.0.18"'
  changed '>4\.2\.0<' '>4.3<' 'CFBundleShortVersionString is "4.3", expected "4.2.0"'
  changed com.zorbel com.example 'CFBundleIdentifier is "com.example.QVSandbox", expected "com.zorbel.QVSandbox"'
  changed '>12\.0<' '>11.0<' 'MinimumOSVersion is "11.0", expected "12.0"'
  changed iPhoneOS iPhoneSimulator 'CFBundleSupportedPlatforms is "iPhoneSimulator", expected "iPhoneOS"'
  changed FMWK APPL 'CFBundlePackageType is "APPL", expected "FMWK"'
  changed CFBundleExecutable CFBundleExec 'CFBundleExecutable is "", expected "QVSandbox"'
}

other_debug_symbols() {
  framework
  mv linked/QVSandbox.dSYM Own.dSYM
  check --symbols Own.dSYM
  echo 'extern "C" [[gnu::used]] const char more[] = "more";' >>a.cpp
  framework
  refused "has another UUID than the framework's binary" check --symbols Own.dSYM
}

other_first_initialiser() {
  sed -i 's/static void load()/static void other()/' a.cpp
  framework
  refused 'the name of initialiser 1 is "(anonymous namespace)::other()", expected "(anonymous namespace)::load()"' \
    check --symbols linked/QVSandbox.dSYM
}
