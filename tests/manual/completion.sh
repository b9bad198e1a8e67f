#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Asks a shell what it would complete, and compares that with the help of the tool.
#   completion.sh SHELL TOOL COMPLETION [PACKAGE]    PACKAGE is the bash-completion package's own script
# shellcheck disable=SC2086 # a command such as "zip list" is two words
set -euo pipefail
shell=$1 TOOL=$2 completion=$3 package=${4-}
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
# shellcheck source=tests/manual/help.sh
. "$here/help.sh"

# In an empty home, in a folder of known content.
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/home" "$folder/here" "$folder/here/trips"
touch "$folder/here/walk.gpx"
export HOME=$folder/home XDG_CONFIG_HOME=$folder/home XDG_DATA_HOME=$folder/home XDG_CACHE_HOME=$folder/home
cd "$folder/here"

# What the shell offers at the end of each line of input, one word a line, and an empty line after each.
offered() {
    case $shell in
    bash) bash --norc "$here/ask-bash.sh" "$completion" ${package:+"$package"} ;;
    zsh) zsh -f "$here/ask-zsh.zsh" "$completion" ;;
    # In fish 4 the question mark is no wildcard.
    fish) fish --no-config --features=qmark-noglob "$here/ask-fish.fish" "$completion" ;;
    esac
}

lines=() wanted=()
expect() {
    lines+=("$1")
    wanted+=("$(sort -u <<<"$2")")
}

files=$'trips/\nwalk.gpx'
while read -r command; do
    line="vexagpx${command:+ $command}"
    expect "$line --" "$(options_of $command | grep -e '^--')"
    while read -r option; do
        case $option in
        --debug-log) expect "$line $option " "$files" ;;
        --by) expect "$line $option " $'code\ntime' ;;
        --conflicts | -o | --output) expect "$line $option " "$files" ;;
        --format) expect "$line $option " $'csv\ngeojson\nkml' ;;
        --colour)
            if [ "$command" = plot ]; then
                expect "$line $option " $'height\nnone\nspeed'
            else
                expect "$line $option " $'always\nauto\nnever'
            fi
            ;;
        --layer) expect "$line $option " $'points\nroutes\ntracks\nwaypoints' ;;
        --strip)
            expect "$line $option " \
                $'cadence\ncourse\ndepth\nheartrate\npower\nspeed\ntemperature\nwatertemperature'
            ;;
        --units) expect "$line $option " $'imperial\nmetric' ;;
        --gpx) expect "$line $option 1" $'1.0\n1.1' ;;
        *) expect "$line $option " '' ;;
        esac
    done < <(value_options_of $command)
    [ -z "$(commands_of $command)" ] || expect "$line " "$(commands_of $command)"
done < <(all_commands)

while read -r command; do
    before="vexagpx $command"
    for argument in $(arguments_of $command); do
        case $argument in
        FILE | IN | OUT | ARCHIVE | OLD | NEW) expect "$before " "$files" ;;
        DIR | FOLDER) expect "$before " 'trips/' ;;
        ENTRY) expect "$before " '' ;;
        *) expect "$before " "an entry in completion.sh for the argument $argument" ;;
        esac
        before+=' walk.gpx'
    done
done < <(leaf_commands)

expect 'vexagpx show walk.gpx ' "$files"
expect 'vexagpx show walk.gpx trips walk.gpx ' "$files"
expect 'vexagpx --debug-log show z' 'zip'
expect 'vexagpx --no-progress zip --debug-log list e' 'extract'
expect 'vexagpx zip --debug-log log extract --overwrite a.zip ' 'trips/'
expect 'vexagpx convert --gpx 1.0 wa' 'walk.gpx'
expect 'vexagpx dump -- wa' 'walk.gpx'
expect 'vexagpx zip extract - ' 'trips/'
# Not --gpx, which is an option of a command; fish 4 also offers what has the letters anywhere in their order.
expect 'vexagpx frobnicate --gp' ''

# Names with blanks and quotes, and what bash takes for several words.
if [ "$shell" = bash ]; then
    mkdir 'trips/old ones'
    touch 'trips/two words.gpx' 'trips/a:b.gpx' "trips/it's.gpx"
    expect 'vexagpx show trips/two' 'trips/two words.gpx'
    expect 'vexagpx show trips/two\ w' 'trips/two words.gpx'
    expect 'vexagpx show "trips/two w' 'trips/two words.gpx'
    expect 'vexagpx show trips/it' "trips/it's.gpx"
    expect 'vexagpx show trips/a' 'trips/a:b.gpx'
    expect 'vexagpx zip extract a.zip trips/' 'trips/old ones/'
    expect 'vexagpx zip extract a:b=c.zip trips/' 'trips/old ones/'
    expect 'vexagpx zip extract "a b.zip" trips/o' 'trips/old ones/'
    expect 'vexagpx convert --gpx=1.' $'--gpx=1.0\n1.1'
    expect 'vexagpx convert --gpx=1.1' '--gpx=1.1'
    expect 'vexagpx convert --gpx=' $'--gpx=1.0\n1.1'
    expect 'vexagpx convert --gpx=1.0 wa' 'walk.gpx'
    expect 'vexagpx convert --app=' ''
    expect 'vexagpx show --debug-log=wa' '--debug-log=walk.gpx'
    expect 'vexagpx zip extract a.zip > wa' 'walk.gpx'
    expect 'vexagpx zip extract 2>log a.zip ' 'trips/'
    expect 'vexagpx zip extract 2> log a.zip ' 'trips/'
fi

mapfile -t answers < <(printf '%s\n' "${lines[@]}" | offered)
answer=0
for i in "${!lines[@]}"; do
    found=''
    while [ -n "${answers[answer]-}" ]; do
        found+=${answers[answer]}$'\n'
        answer=$((answer + 1))
    done
    answer=$((answer + 1))
    same "${lines[i]}" "${wanted[i]}" "$(sort -u <<<"${found%$'\n'}")"
done
[ "$answer" -eq "${#answers[@]}" ] || {
    echo "$shell gave ${#answers[@]} lines, not $answer"
    failed=1
}
if [ "$shell" = bash ]; then
    # Some set what splits words, so that "=" does not.
    # shellcheck disable=SC2016 # expanded by the other bash
    echo 'COMP_WORDBREAKS=${COMP_WORDBREAKS//=/}' >"$folder/breaks"
    same 'an option with "=" in one word' '--gpx=1.1' \
        "$(echo 'vexagpx convert --gpx=1.1' | bash --norc "$here/ask-bash.sh" "$completion" "$folder/breaks")"
fi
finish
