# shellcheck shell=bash
# The same sources give the same bytes, wherever they lie.

two_folders() {
  mkdir -p a/longer/way/down/tests
  cd a/longer/way/down || return
  cp -R "$QV_SOURCE_DIR"/{CMakeLists.txt,CMakePresets.json,QVSandbox,cmake} .
  cp -R "$QV_SOURCE_DIR/tests/ios" tests/
  cmake --preset ios >configured
  cmake --build --preset ios >built
  local part
  for part in QVSandbox.framework QVSandbox.framework.dSYM; do
    diff --recursive "$QV_BUILT/$part" "build/ios/$part"
  done
}
