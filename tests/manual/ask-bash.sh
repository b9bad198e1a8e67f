# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Completes the lines of standard input as bash does when the tab key is pressed at their ends.
#   ask-bash.sh COMPLETION
# shellcheck disable=SC1091
. /usr/share/bash-completion/bash_completion
# shellcheck disable=SC1090
. "$1"

# shellcheck disable=SC2034 # the COMP_ variables are what a completion reads
while IFS= read -r COMP_LINE; do
    COMP_POINT=${#COMP_LINE}
    read -ra COMP_WORDS <<<"$COMP_LINE"
    [[ $COMP_LINE != *' ' ]] || COMP_WORDS+=('')
    COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
    COMP_TYPE=9 COMPREPLY=()
    _vexagpx vexagpx "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD - 1]}" 2>/dev/null
    for reply in "${COMPREPLY[@]}"; do
        # The shell itself puts the slash behind a folder.
        [[ ! -d $reply || $reply == */ ]] || reply+=/
        printf '%s\n' "$reply"
    done
    echo
done
