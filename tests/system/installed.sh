#!/bin/sh
# An installed tree, moved to another place: its files, pages, completions, and a program of somebody
# who has nothing but the tree. What the desktop gets is given to the desktop's own validators.
# usage: installed.sh SOURCE BUILD FOLDER
set -eu
source=$1
build=$2
work=$3/installed
fail() {
  echo "installed.sh: $*" >&2
  exit 1
}

rm -rf "$work"
mkdir -p "$work/mine" "$work/home" "$work/fish"
cmake --install "$build" --prefix "$work/first" >"$work/install.log" || fail "no install: $(cat "$work/install.log")"
mv "$work/first" "$work/tree"
tree=$work/tree
export PATH="$tree/bin:$PATH" HOME="$work/home"

for file in bin/kiva bin/kiva-console bin/kiva-campaign bin/tarn share/applications/org.kiva.kiva.desktop \
  share/icons/hicolor/scalable/apps/kiva.svg share/icons/hicolor/48x48/apps/kiva.png; do
  [ -s "$tree/$file" ] || fail "$file is missing"
done
for program in kiva kiva-console kiva-campaign tarn; do
  # Without a display.
  env -u DISPLAY QT_QPA_PLATFORM=xcb "$program" --version | grep -q "^$program [0-9]" || fail "$program --version"
  env -u DISPLAY QT_QPA_PLATFORM=xcb "$program" --help >"$work/help" || fail "$program --help"
  gunzip -k "$tree/share/man/man1/$program.1.gz"
  mandoc -Tlint -W warning "$tree/share/man/man1/$program.1" || fail "the page of $program"
  mandoc -Tutf8 "$tree/share/man/man1/$program.1" | col -b >"$work/page"
  grep -oE '^ +(-[a-z],)?--[a-z-]+' "$work/help" | grep -oE -- '--[a-z-]+' >"$work/options"
  while read -r option; do
    grep -qe "$option" "$work/page" || fail "$program: $option has no place in the page"
  done <"$work/options"
  bash -n "$tree/share/bash-completion/completions/$program" || fail "$program in bash"
  zsh -n "$tree/share/zsh/vendor-completions/_$program" || fail "$program in zsh"
  HOME=$work/fish fish -n "$tree/share/fish/vendor_completions.d/$program.fish" || fail "$program in fish"
done
desktop-file-validate "$tree/share/applications/org.kiva.kiva.desktop" || fail "the desktop file"
appstreamcli validate --no-net "$tree/share/metainfo/org.kiva.kiva.metainfo.xml" >"$work/appstream" ||
  fail "the metainfo: $(cat "$work/appstream")"
update-mime-database "$tree/share/mime" >/dev/null 2>&1
# A compiled module is known without its ending, too.
cp "$source/examples/lift/lift.zu" "$source/examples/counter/counter.zuc" "$work/mine"
cp "$work/mine/counter.zuc" "$work/mine/nameless"
for kind in lift.zu:text/x-zu counter.zuc:application/x-zuc nameless:application/x-zuc; do
  found=$(XDG_CURRENT_DESKTOP=XFCE XDG_DATA_DIRS="$tree/share:/usr/share" xdg-mime query filetype "$work/mine/${kind%:*}")
  [ "$found" = "${kind#*:}" ] || fail "${kind%:*} has the type $found"
done
rm "$work/mine/nameless"

# Completion of modules, by bash's own means.
cd "$work/mine"
found=$(bash -c '. "$1"; COMP_WORDS=(tarn counter.zuc --eval ca); COMP_CWORD=3; compopt() { :; }; _tarn; echo "${COMPREPLY[@]}"' \
  - "$tree/share/bash-completion/completions/tarn")
[ "$found" = carry ] || fail "bash completes ca to \"$found\""
found=$(HOME=$work/fish fish -c "source $tree/share/fish/vendor_completions.d/kiva-console.fish; complete -C 'kiva-console --format vc'" | cut -f1)
[ "$found" = vcd ] || fail "fish completes vc to \"$found\""

# A log of remarks, of a file with a blank in its name, as its standard has it.
printf 'module a: Input: i; Output: o;\npresent o emit o\nend\n' >'two words.zu'
tarn -q --sarif remarks 'two words.zu' 2>/dev/null && fail "a circle is taken"
/usr/bin/python3 -c 'import json, jsonschema, sys; jsonschema.validate(*(json.load(open(f)) for f in sys.argv[1:]))' \
  remarks "$source/tests/system/sarif.schema.json" 2>schema || fail "the log of remarks: $(cat schema)"
rm remarks schema 'two words.zu'

# The program of the page, by CMake and by pkg-config.
# fenced LANGUAGE: the first block of the page in it.
fenced() {
  awk -v open="\`\`\`$1" '$0 == open { inside = 1; next } /^```/ { inside = 0 } inside' "$source/docs/library.md"
}
fenced cpp >mine.cc
fenced cmake >CMakeLists.txt
if ! { cmake -S . -B built -DCMAKE_PREFIX_PATH="$tree" && cmake --build built; } >"$work/built.log" 2>&1; then
  fail "by CMake: $(cat "$work/built.log")"
fi
PKG_CONFIG_PATH=$(dirname "$(find "$tree" -name kiva.pc)")
export PKG_CONFIG_PATH
libdir=$(pkg-config --variable=libdir kiva)
# shellcheck disable=SC2046  # words
c++ -std=c++20 mine.cc -o by_pkg $(pkg-config --cflags --libs kiva) -Wl,-rpath,"$libdir"
# A shared floor has its version in its name, and nothing that another one has.
for library in "$libdir"/libkiva*.so; do
  [ -e "$library" ] || continue
  objdump -p "$library" | grep -q "SONAME  *$(basename "$library")\\.[0-9]" || fail "the name of $library"
  nm -D --defined-only "$library" | awk '$2 ~ /[TDBR]/ { print $3 }'
done >"$work/names"
sort "$work/names" | uniq -d >"$work/twice"
[ ! -s "$work/twice" ] || fail "in two libraries: $(head "$work/twice")"
printf 'module lamp:\nInput: button;\nOutput: light;\nloop { pause >> wait button >> emit light }\nend\n' >lamp.zu
printf 'module a:\nOutput: o;\nemit p\nend\n' >wrong.zu
for program in built/mine ./by_pkg; do
  "$program" lamp.zu >trace 2>&1 || fail "$program: $(cat trace)"
  printf '1:\n2:\n3: light\n' | cmp -s - trace || fail "$program shows $(cat trace)"
  "$program" wrong.zu >trace 2>&1 && fail "$program takes a wrong file"
  grep -q '^wrong.zu:3:[0-9]*: error: "p" is not declared' trace || fail "$program says $(cat trace)"
done
[ -z "$(ls -A "$HOME")" ] || fail "left in the home folder: $(ls -A "$HOME")"
