#!/bin/bash
# texts.sh template FILE: writes every translatable text of the sources into FILE (.pot).
# texts.sh update: takes new and changed texts into Translations/*.po and marks those to review fuzzy.
# Run in the root of the checkout.
set -euo pipefail

template() {
    # Sorted, and without the date that xgettext writes: the same sources give the same file.
    find Sources -name '*.cpp' -o -name '*.h' | LC_ALL=C sort |
        xgettext --files-from=- --output=- --language=C++ --from-code=UTF-8 --no-wrap \
            --keyword --keyword=tr:1 --keyword=trc:1c,2 --keyword=trn:1,2 --keyword=message:1 \
            --keyword=translatable:1,1t --keyword=translatable:1c,2,2t --add-comments=Translators: --add-location=file \
            --package-name=Gullwick |
        sed -e '/^"POT-Creation-Date:/d' >"$1"
}

case ${1-} in
    template)
        template "$2"
        ;;
    update)
        pot=$(mktemp)
        trap 'rm -f "$pot"' EXIT
        template "$pot"
        for po in Translations/*.po; do
            msgmerge --quiet --update --backup=none --no-wrap --add-location=file --previous "$po" "$pot"
            msgattrib --no-obsolete --no-wrap --output-file="$po" "$po"
            printf '%s: ' "$po"
            msgfmt --statistics --output-file=/dev/null "$po" 2>&1
        done
        ;;
    *)
        echo "usage: $0 template FILE | update" >&2
        exit 2
        ;;
esac
