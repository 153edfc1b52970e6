#!/bin/sh
# tarn_windows.sh TARN FOLDER: the compiler's message windows on an X server of its own: each waits
# until it is closed, and the program goes on. Leaves the pictures tarn-*.png in FOLDER. Exit status
# 77: tools are missing.
for tool in xvfb-run xdotool import; do
  command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
if [ -z "${KIVA_ON_XVFB:-}" ]; then
  KIVA_ON_XVFB=1 exec xvfb-run -a -s "-screen 0 1000x720x24 -noreset" "$0" "$@"
fi
tarn=$1 pictures=$2
work=$(mktemp -d)
program=
trap '[ -z "$program" ] || kill "$program" 2>/dev/null; rm -rf "$work"' EXIT
cd "$work" || exit 1
fail() {
  echo "FAILED: $1"
  cat err
  exit 1
}
# close_window PICTURE TITLE KEY
close_window() {
  for _ in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do
    window=$(xdotool search --onlyvisible --name "$2" | tail -n 1)
    [ -z "$window" ] || break
    sleep 0.25
  done
  [ -n "$window" ] || fail "no window \"$2\""
  sleep 0.5
  kill -0 "$program" || fail "the program did not wait for its window"
  import -window root "$pictures/tarn-$1.png"
  xdotool windowfocus "$window"
  sleep 0.25
  xdotool key "$3"
}

for _ in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do
  xdotool getdisplaygeometry >/dev/null 2>&1 && break
  sleep 0.25
done
printf 'module broken:\nemit >> end\n' >broken.zu
printf 'module ring: Output: o;\npresent o emit o\nend\n' >ring.zu
printf 'module good: Input: i; Output: o;\nwait i >> emit o\nend\n' >good.zu
"$tarn" --windows broken.zu ring.zu good.zu >out 2>err &
program=$!
close_window syntax '^Alert$' Return
close_window cycle '^Message$' Escape
wait "$program"
status=$?
program=
[ "$status" -eq 1 ] || fail "exit status $status"
grep -q '^broken.zu:2:6: error: expected' err || fail "the text is not on the error stream"
grep -q 'good.zuc' out || fail "the third file was not compiled"
echo "two windows, closed by two keys"
