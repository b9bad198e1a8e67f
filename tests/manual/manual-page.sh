#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Compares the manual page with the help of the tool, and lets mandoc judge its form.
#   manual-page.sh TOOL PAGE VERSION [MANDOC]
# shellcheck disable=SC2086 # a command such as "zip list" is two words
set -euo pipefail
TOOL=$1 page=$2 version=$3 mandoc=${4-}
# shellcheck source=tests/manual/help.sh
. "$(dirname "${BASH_SOURCE[0]}")/help.sh"

plain=$(sed 's/\\f[BIR]//g; s/\\-/-/g; s/\\(aq/'"'"'/g; s/\\&//g' "$page")
# All lines as one, because the page breaks them elsewhere than the help.
flat=$(tr -s '\n ' '  ' <<<"$plain")

# The part of the page that is about a command.
section_of() {
    sed -n "/^\.SS \"vexagpx $1\"\$/,/^\.S[SH] /p" <<<"$plain" | sed '1d'
}

# Options in the brackets of a synopsis.
options_in() {
    sed '/^\.PP$/q' | sed -n 's/^\[\(-.*\)\]$/\1/p' | sed 's/ | /\n/g; s/ [A-Z][A-Z ]*$//'
}

same 'commands' "$(leaf_commands)" "$(sed -n 's/^\.SS "vexagpx \(.*\)"$/\1/p' <<<"$plain")"

while read -r command; do
    section=$(section_of "$command")
    same "options of $command" "$(options_of $command | sort)" "$(options_in <<<"$section" | sort)"
    same "arguments of $command" "$(arguments_of $command)" \
        "$(sed -n '/^\.PP$/,$p' <<<"$section" | sed -n '/^\.TP$/{n;s/^\([A-Z]*\)$/\1/p}')"
done < <(leaf_commands)

while read -r command; do
    while IFS=$'\t' read -r options text; do
        if [ -z "$text" ] || ! grep -qF -e "$text" <<<"$flat" ||
            ! grep -q -e "^${options//,/, }\( \|$\)" <<<"$plain"; then
            echo "the page does not tell of vexagpx $command: $options $text"
            failed=1
        fi
        compared=$((compared + 1))
    done < <(texts_of $command)
done < <(all_commands)

grep -qF "vexaTransferLib $version" <<<"$plain" || {
    echo "the page does not name the version $version"
    failed=1
}

if [ -n "$mandoc" ]; then
    "$mandoc" -T lint "$page" || failed=1
else
    echo 'mandoc is not installed: the form of the page is not judged'
fi
finish
