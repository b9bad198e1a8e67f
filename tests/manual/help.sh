# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# shellcheck disable=SC2086 # a command such as "zip list" is two words
# What the tool's own help says of its commands; sourced by the tests of this folder, with TOOL set.

# The help of a command: help_of zip list
help_of() {
    "$TOOL" "$@" --help
}

# The commands right below one, a line each.
commands_of() {
    help_of "$@" | sed -n '/^Subcommands:$/,/^$/s/^  \([a-z][a-z-]*\) .*/\1/p'
}

# All options of a command, a line each: -h, --help ...
options_of() {
    help_of "$@" | sed -n 's/^  \(-[^ ]*\).*/\1/p' | tr ',' '\n'
}

# The options of a command that take a value, which the help names in capitals directly after them.
value_options_of() {
    help_of "$@" | sed -n 's/^  \(-[^ ]*\) [A-Z].*/\1/p' | tr ',' '\n'
}

# A line for each option of a command: its names, a tab, and its text, which starts in column 31.
texts_of() {
    help_of "$@" | awk '
        function flush() { if (names != "") print names "\t" text; names = "" }
        /^  -/ { flush(); names = $1; text = substr($0, 30, 1) == " " ? substr($0, 31) : "" }
        substr($0, 1, 30) !~ /[^ ]/ && length($0) > 30 && names != "" { text = text (text == "" ? "" : " ") substr($0, 31) }
        /^$/ { flush() }
        END { flush() }'
}

# The names of a command's arguments, a line each.
arguments_of() {
    help_of "$@" | sed -n '/^Positionals:$/,/^$/s/^  \([A-Z]*\) .*/\1/p'
}

# The tool and all commands, a line each, the tool's own line being empty: "", "show", "zip", "zip list" ...
all_commands() {
    local command below
    echo
    while read -r command; do
        echo "$command"
        while read -r below; do
            echo "$command $below"
        done < <(commands_of "$command")
    done < <(commands_of)
}

# The commands that have none below them.
leaf_commands() {
    local command
    while read -r command; do
        [ -n "$(commands_of $command)" ] || echo "$command"
    done < <(all_commands)
}

# Fails with a message unless both texts are equal: same WHAT EXPECTED FOUND
failed=0
compared=0
same() {
    compared=$((compared + 1))
    if [ "$2" != "$3" ]; then
        echo "differs: $1"
        diff --label 'the help' --label 'found' -u <(echo "$2") <(echo "$3") || true
        failed=1
    fi
}

finish() {
    echo "$compared compared"
    [ "$compared" -gt 0 ] && [ "$failed" -eq 0 ]
}
