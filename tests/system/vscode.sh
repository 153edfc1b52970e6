#!/bin/sh
# The extension as it is packed, in node, with a stand-in for the editor: vscode.sh SOURCE TARN WORK
set -e
command -v npm >/dev/null && command -v node >/dev/null || exit 77
source=$1 tarn=$2 work=$3/vscode
# Packing fetches the client: without a net there is nothing to test.
npm view vscode-languageclient@9 version >/dev/null 2>&1 || exit 77
rm -rf "$work" && mkdir -p "$work"
"$source/editors/vscode/pack" "$work/zu.vsix" >"$work/pack.log" 2>&1 || { cat "$work/pack.log" && exit 1; }
cd "$work"
python3 -m zipfile -e zu.vsix .
node "$source/tests/system/vscode.js" "$work/extension" "$tarn" "$work"
