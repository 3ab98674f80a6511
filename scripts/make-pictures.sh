#!/bin/sh
# Makes the icons, bitmaps and cursors in resources/pictures from the drawings in
# resources/pictures/source. The results are committed, so only a changed drawing
# needs this script, rsvg-convert (package librsvg2-bin) and Python 3.
set -eu

cd "$(dirname "$0")/../resources/pictures"
pack="../../scripts/make-pictures.py"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# render NAME SIZE...: prints the names of the PNG files made.
render() {
    name="$1"
    shift
    for size in "$@"; do
        rsvg-convert -w "$size" -h "$size" "source/$name.svg" -o "$work/$name$size.png"
        echo "$work/$name$size.png"
    done
}

icon() {
    # One size for each scale: 100, 150 and 200 %.
    name="$1"
    shift
    # shellcheck disable=SC2046 # one argument for each size
    python3 "$pack" ico "$name.ico" $(render "$name" "$@")
}

# One file for each scale: 100, 150 and 200 %.
bitmaps() {
    for size in 16 24 32; do
        python3 "$pack" bmp "$1$size.bmp" "$(render "$1" "$size")"
    done
}

cursor() {
    # shellcheck disable=SC2046
    python3 "$pack" cur "$1.cur" "$2" "$3" $(render "$1" 32 48 64)
}

icon Application 16 24 32
for subject in Groups Resources Messages ActivityTypes Activities MoveActivity; do
    icon "$subject" 16 24 32
    bitmaps "$subject"
done
for move in MoveToTop MoveUp MoveDown MoveToBottom; do
    icon "$move" 16 24 32
    bitmaps "$move"
done
cursor CursorMove 1 1
cursor CursorCopy 1 1
