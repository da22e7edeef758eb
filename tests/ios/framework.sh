# shellcheck shell=bash
# A small framework that keeps every promise, and one that breaks each.

# framework OPTIONS...: QVSandbox.framework from a.cpp; the last option of a kind wins.
framework() {
  mkdir -p QVSandbox.framework
  printf 'QVSandboxInit\nswizzleMethod\n' >exports
  printf '_QVSandboxInit\n_swizzleMethod\n' >exports.macho
  cp "$QV_BUILT/QVSandbox.framework/Info.plist" QVSandbox.framework/
  link a.cpp -o QVSandbox.framework/QVSandbox -install_name @rpath/QVSandbox.framework/QVSandbox \
    -framework CoreData -framework Foundation -framework UIKit -lobjc \
    -Wl,-exported_symbols_list,exports.macho "${sdk[@]}" "$@"
}
sdk=(-framework Zorbel)

check() {
  "$QV_SOURCE_DIR/scripts/check-framework.sh" QVSandbox.framework exports \
    "$QV_SOURCE_DIR/cmake/ios/iPhoneOS.sdk" "$QV_FRAMEWORKS"
}

cat >a.cpp <<'END'
extern "C" {
void* objc_lookUpClass(const char*);
[[gnu::visibility("default")]] void swizzleMethod() { objc_lookUpClass("NSObject"); }
[[gnu::constructor(101)]] static void load() { swizzleMethod(); }
[[gnu::visibility("default"), gnu::constructor(102)]] void QVSandboxInit() { swizzleMethod(); }
}
END

control() {
  framework
  check
}

extra_export() {
  echo 'extern "C" [[gnu::visibility("default")]] void more() {}' >>a.cpp
  framework -Wl,-exported_symbol,_more
  refused 'the list of exported symbols is "_QVSandboxInit _more _swizzleMethod"' check
}

lost_export() {
  framework
  echo another >>exports
  refused 'expected "_QVSandboxInit _another _swizzleMethod"' check
}

newer_release() {
  framework --target=arm64-apple-ios13.0
  refused 'the oldest release is "13.0", expected "12.0"' check
}

install_name() {
  framework -install_name /usr/lib/QVSandbox
  refused 'the install name is "/usr/lib/QVSandbox"' check
}

third_initialiser() {
  echo '[[gnu::constructor(101)]] static void more() { swizzleMethod(); }' >>a.cpp
  framework
  refused 'the number of initialisers is "3", expected "2"' check
}

wrong_last_initialiser() {
  sed -i 's/constructor(101)/constructor(103)/' a.cpp
  framework
  refused 'the address of the last initialiser is' check
}

build_path() {
  echo 'extern "C" [[gnu::used]] const char where[] = "/home/someone/QVSandbox.cpp";' >>a.cpp
  framework
  refused 'tells where it was built: /home/someone/QVSandbox.cpp' check
}

no_sdk() {
  sdk=()
  framework
  refused 'does not name @rpath/Zorbel.framework/Zorbel among the libraries to load first' check
}

late_import() {
  echo 'extern "C" int pthread_mutex_lock(void*); [[gnu::used]] static int use() { return pthread_mutex_lock(nullptr); }' >>a.cpp
  framework -Wl,-undefined,dynamic_lookup
  refused 'imports _pthread_mutex_lock from' check
}

extra_file() {
  framework
  echo >QVSandbox.framework/notes.txt
  refused 'the list of files is "Info.plist QVSandbox notes.txt"' check
}

other_version() {
  framework
  sed -i 's/4\.2\.0\.18/4.2.0.19/' QVSandbox.framework/Info.plist
  refused 'CFBundleVersion in Info.plist is "4.2.0.19", expected "4.2.0.18"' check
}
