#!/usr/bin/env bash
# Creates the benchmark images, using only Debian packages.
#   bench/make-corpus.sh FOLDER          about 190 MB of downloads, 1.6 GB on disk, two minutes
#   photos/, mid/  40 photographs of 2 to 12.5 megapixels as jpg, bmp, png, tif; mid/ has every fourth
#   small/         400 crops of 640x480
#   graphics/      twelve screens of text, tables and charts
#   scan/          three bilevel documents of up to eight pages at 300 dpi, as TIFF in G4, LZW and PackBits
set -euo pipefail
mkdir -p "${1:?usage: make-corpus.sh FOLDER}"
out=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
work=$out/.build
mkdir -p "$work/debs" "$work/unpacked" "$work/pages"

# Unpack the wallpapers without installing them.
cd "$work/debs"
for package in mate-backgrounds lomiri-wallpapers-16.04 lomiri-wallpapers-20.04 plasma-workspace-wallpapers \
    ukui-wallpapers; do
    ls "${package}"_*.deb >/dev/null 2>&1 || apt-get -qq download "$package"
    [ -d "$work/unpacked/$package" ] || dpkg-deb -x "${package}"_*.deb "$work/unpacked/$package"
done

cd "$work"
for licence in GPL-3 GPL-2 LGPL-2.1; do
    ls pages/$licence-* >/dev/null 2>&1 && continue
    {
        printf '.nf\n.ps 10\n'
        sed 's/\\/\\e/g; s/^\([.'"'"']\)/\\\&\1/' /usr/share/common-licenses/$licence
    } >$licence.ms
    groff -Tps $licence.ms >$licence.ps 2>/dev/null
    ps2pdf $licence.ps $licence.pdf
    pdftoppm -gray -r 300 -f 1 -l 8 $licence.pdf pages/$licence
done

/usr/bin/python3 "$here/make_corpus.py" "$out" "$work/unpacked" "$work/pages"
