#!/usr/bin/env bash
# Every translation file lists every text of the window, translated: lupdate run on the sources leaves it unchanged
# (no text missing, none stale), and no entry is unfinished.
# Usage: translations_up_to_date.sh SOURCE_DIR LUPDATE
set -euo pipefail
root=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
status=0
for ts in "$root"/translations/*.ts; do
  copy="$work/$(basename "$ts")"
  cp "$ts" "$copy"
  LUPDATE=$2 "$root/scripts/update-translations.sh" "$copy"
  diff -u "$ts" "$copy" || { echo "$ts: run scripts/update-translations.sh and translate what it adds"; status=1; }
  if grep -n 'type="unfinished"\|type="vanished"\|type="obsolete"' "$ts"; then status=1; fi
done
exit $status
