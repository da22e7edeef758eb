#!/bin/bash
# picture.sh: plays the demo and takes the picture of its report that the README shows, docs/report.png. Needs chromium
# (scripts/packages-web.txt) and a build.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

command -v chromium >/dev/null || { echo "picture.sh: chromium is not there" >&2; exit 1; }
build/linux/bin/qvdevice play apps/day.scenario --report build/demo >/dev/null
profile=$(mktemp -d)
trap 'rm -rf "$profile"' EXIT
# To the chapter in which copying is refused, then allowed.
chromium --headless --no-sandbox --disable-gpu --disable-quic --no-first-run --disable-background-networking \
  --disable-component-update --disable-sync --hide-scrollbars --user-data-dir="$profile" --window-size=1400,1300 \
  --screenshot="$PWD/docs/report.png" "file://$PWD/build/demo/index.html" 2>/dev/null
size=$(stat --format=%s docs/report.png)
if ((size > 300000)); then
  echo "picture.sh: docs/report.png has $size bytes, more than 300000" >&2
  exit 1
fi
