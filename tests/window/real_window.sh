#!/bin/sh
# real_window.sh KIVA EXAMPLES FOLDER: moves the program through load, step and the closing of a dock
# on an X server of its own; leaves the pictures real-*.png in FOLDER. Exit status 77: tools are
# missing.
for tool in xvfb-run xdotool import convert; do
  command -v "$tool" >/dev/null || { echo "skipped: $tool is not installed"; exit 77; }
done
if [ "${3:-}" ] && [ -z "${KIVA_ON_XVFB:-}" ]; then
  KIVA_ON_XVFB=1 exec xvfb-run -a -s "-screen 0 1000x720x24" "$0" "$@"
fi
kiva=$1 examples=$2 pictures=$3
unset QT_QPA_PLATFORM QT_SCALE_FACTOR
work=$(mktemp -d)
program=
cleanup() {
  [ -z "$program" ] || kill "$program" 2>/dev/null
  rm -rf "$work"
}
trap cleanup EXIT
export XDG_STATE_HOME="$work" XDG_CONFIG_HOME="$work"
cp "$examples/counter/counter.zuc" "$work/"

fail() {
  echo "FAILED: $1"
  [ ! -f "$work/err" ] || cat "$work/err"
  exit 1
}
# The number of pixels of exactly that colour on the screen, which is also left as a picture.
count() {
  import -window root "$pictures/real-$1.png"
  convert "$pictures/real-$1.png" -fill black +opaque "$2" -fill white -opaque "$2" \
    -format '%[fx:round(mean*w*h)]' info:
}
# Waits until the count is above the bound: look NAME COLOUR BOUND.
look() {
  for _ in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20; do
    [ "$(count "$1" "$2")" -le "$3" ] || return 0
    sleep 0.25
  done
  fail "$1: not more than $3 pixels of $2"
}
window_of() { xdotool search --sync --onlyvisible --name "$1" | tail -n 1; }

"$kiva" --verbose 2>"$work/err" &
program=$!
main=$(window_of '^KIVA$')
[ -n "$main" ] || fail "no window"
xdotool windowfocus "$main"
xdotool key alt+n
dialog=$(window_of 'Ouvrir un fichier ZUC')
[ -n "$dialog" ] || fail "no file dialog"
xdotool windowfocus "$dialog"
xdotool type "$work/counter.zuc"
xdotool key Return
look loaded '#ff0000' 3000
grep -q "Start parsing :$work/counter.zuc" "$work/err" || fail "the file was not parsed"

# First row One, second row Zero, Go: bit 0 of the counter goes up.
xdotool windowfocus "$main"
xdotool key alt+i ctrl+Home space alt+1 alt+i Down space alt+0 F5
look stepped '#0000ff' 3000
red=$(count stepped '#ff0000')
[ "$red" -eq 0 ] || fail "$red red pixels after a step: something is still unknown"

# The close button of the Debugger dock is the lowest one at the window's right edge; its top row has
# a red of its own.
yellow=$(count stepped '#ffff00')
row=$(convert "$pictures/real-stepped.png" -crop 1x300+929+380 +repage txt:- |
  sed -n 's/^0,\([0-9]*\):.*#E66666.*/\1/p' | tail -n 1)
[ -n "$row" ] || fail "no close button found"
xdotool mousemove 929 $((380 + row + 6)) click 1
for _ in 1 2 3 4 5 6 7 8; do
  sleep 0.25
  count closed '#ffff00' >"$work/count"
  cmp -s "$pictures/real-stepped.png" "$pictures/real-closed.png" || break
done
cmp -s "$pictures/real-stepped.png" "$pictures/real-closed.png" && fail "the dock did not close"
kill -0 "$program" || fail "the program has ended"
echo "loaded, stepped, closed a dock; $yellow yellow pixels after the step"
