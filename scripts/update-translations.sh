#!/usr/bin/env bash
# Brings translation files up to date with the window's texts, with Qt
# Linguist's lupdate: a new text is added as unfinished (to be translated in
# Qt Linguist, `linguist translations/kalkora_en.ts`), a text no longer used
# is dropped. Entries carry no source locations, so that editing the code
# does not touch the file.
# Usage: scripts/update-translations.sh [file.ts ...]   (default: every file
# in translations/); LUPDATE names the lupdate program to use.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
lupdate=${LUPDATE:-/usr/lib/qt5/bin/lupdate}
files=("$@")
if ((${#files[@]} == 0)); then files=("$root"/translations/*.ts); fi
cd "$root"
"$lupdate" -silent -locations none -no-obsolete -I . app tasks -ts "${files[@]}"
