# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# Lets a bash complete the lines of standard input at their ends, as if a key was pressed there, and prints what it
# offers for each.
#   ask-bash.sh COMPLETION [PACKAGE]    PACKAGE is the bash-completion package's own script
set -euo pipefail
mapfile -t lines

# Control-X puts all that is offered into the line, control-Y prints the line and empties it.
# shellcheck disable=SC2016 # expanded by the other bash
setup='
    bind "set completion-query-items 0" "set bell-style none"
    bind "\"\C-x\": insert-completions"
    shown() { printf "%s\n" "$READLINE_LINE" >&3; READLINE_LINE="" READLINE_POINT=0; }
    bind -x "\"\C-y\": shown"'
for script in "${@:2}" "$1"; do
    setup+=$'\n'". $(printf %q "$script")"
done
mapfile -t answers < <(printf '%s\x18\x19' "${lines[@]}" |
    bash --noprofile --rcfile <(echo "$setup") -i 3>&1 >/dev/null 2>&1)
[ "${#answers[@]}" -eq "${#lines[@]}" ]

# The words of a line, one a line, without their quotes, the last of which may be open.
words() {
    local quote found
    for quote in '' '"' "'"; do
        if found=$(xargs printf '%s\n' <<<"$1$quote" 2>/dev/null); then
            echo "$found"
            return
        fi
    done
    return 1
}

for i in "${!lines[@]}"; do
    if [ "${answers[i]}" != "${lines[i]}" ]; then
        # "x" makes a word of what is to be completed.
        words "${answers[i]}" | tail -n "+$(words "${lines[i]}x" | wc -l)" | while IFS= read -r offer; do
            # The key puts no slash after a folder.
            [[ ! -d $offer || $offer == */ ]] || offer+=/
            printf '%s\n' "$offer"
        done
    fi
    echo
done
