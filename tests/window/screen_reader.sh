#!/bin/sh
# screen_reader.sh KIVA MODULE: what a screen reader meets in both windows, over its own bus on an X
# server of its own. Exit status 77: tools are missing.
for tool in xvfb-run dbus-run-session; do
  command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
/usr/bin/python3 -c 'import gi; gi.require_version("Atspi", "2.0")' 2>/dev/null ||
  { echo "skipped: gir1.2-atspi-2.0 is not installed"; exit 77; }
if [ -z "${KIVA_ON_XVFB:-}" ]; then
  KIVA_ON_XVFB=1 exec xvfb-run -a -s "-screen 0 1440x900x24" dbus-run-session -- "$0" "$@" 2>&1
fi
unset QT_QPA_PLATFORM QT_SCALE_FACTOR
work=$(mktemp -d)
program=
cleanup() {
  [ -z "$program" ] || kill "$program" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
export XDG_STATE_HOME="$work" XDG_CONFIG_HOME="$work" XDG_RUNTIME_DIR="$work"
cp "$2" "$work/module.zuc"
QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 "$1" --scope --open "$work/module.zuc" &
program=$!
/usr/bin/python3 -W ignore "$(dirname "$0")/screen_reader.py"
