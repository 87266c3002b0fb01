#!/bin/sh
# Makes the pictures of this folder again: every beach, every beach at three moments, every item, and every
# item in the light of every beach. Needs a build with -DGULL_BENCHMARKS=ON and ImageMagick, which reduces the
# pictures to 256 colours.
#
#     Docs/make-pictures.sh [build folder]
set -eu
here=$(cd "$(dirname "$0")" && pwd)
build=${1:-$here/../build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

LIBGL_ALWAYS_SOFTWARE=1 "$build/Benchmarks/ContactSheets" "$work"
for picture in "$work"/*.png; do
    convert "$picture" -strip -colors 256 "PNG8:$here/pictures/$(basename "$picture")"
done
