#!/bin/sh
# Whatever the programs write is a matter of what they read: the same texts, drawings, benches, traces
# and pages, byte for byte, in another folder, years later, at another place of the world.
# usage: same_bytes.sh SOURCE PROGRAMS FOLDER
set -eu
source=$1 work=$3/same_bytes
PATH=$2:$PATH
command -v faketime >/dev/null || exit 77
fail() {
  echo "same_bytes.sh: $*" >&2
  exit 1
}
rm -rf "$work"

# written DATE FOLDER: writes all there is of some examples, into FOLDER/out.
written() {
  mkdir -p "$2/out"
  cp "$source"/examples/bus_arbiter/*.zu "$source"/examples/bus_arbiter/*.stimuli \
    "$source"/examples/lift/*.zu "$source"/examples/lift/*.stimuli "$2"
  cd "$2"
  # The variables are those of the inner shell.
  # shellcheck disable=SC2016
  faketime "$1" sh -euc '
    tarn -q --map --comments -d out *.zu
    tarn --fmt - <lift.zu >out/laid_out
    tarn -q --map --sarif out/sarif -d out lift.zu 2>out/remarks || :
    for module in bus_arbiter lift; do
      for option in $2; do tarn -q $option -d out out/$module.zuc || [ $option = --explicit ]; done
      tarn -q --dot --svg -d out out/$module.zuc
      tarn -q --bench c $module.stimuli -d out out/$module.zuc
      for format in text outputs json digest vcd fst; do
        kiva-console --format $format -o out/$module.$format out/$module.zuc $module.stimuli
      done
      kiva-console --format json --random 50 --save-stimuli out/$module.drawn out/$module.zuc >out/$module.random
      kiva-campaign --runs 200 -o out/$module.campaign out/$module.zuc
      tarn -q --cover -d out out/$module.zuc
    done
    tarn --prove --certificate out/certificate bus_arbiter.zu >out/proofs
    "$1" out/site' sh "$source/scripts/site" "$targets" >"$work/said" 2>&1 || fail "$2: $(cat "$work/said")"
  cd "$work"
}

targets=$(tarn --help | sed -n '/^Target texts/,/^$/p' | grep -oE -- '--[a-z-]+' | tr '\n' ' ')
[ -n "$targets" ] || fail "no target texts"
mkdir -p "$work"
TZ=UTC written '2026-03-01 12:00:00' "$work/here"
TZ=Asia/Tokyo LC_ALL=C written '2031-11-30 23:59:50' "$work/some where/else"
diff -r "$work/here/out" "$work/some where/else/out" >"$work/differs" || fail "$(head -n 20 "$work/differs")"
[ "$(find "$work/here/out" -type f | wc -l)" -gt 100 ] || fail "hardly anything was written"
# Lines of the source are found from wherever the program is called.
words='zu:[0-9]* [a-z]'
(cd / && tarn -q --c -d "$work" "$work/here/out/bus_arbiter.zuc")
grep -q "$words" "$work/bus_arbiter.c" || fail "no words of the source beside its lines"
[ "$(grep -c "$words" "$work/bus_arbiter.c")" = "$(grep -c "$words" "$work/here/out/bus_arbiter.c")" ] ||
  fail "fewer words from another folder"
