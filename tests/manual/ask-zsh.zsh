# SPDX-License-Identifier: MIT
# Completes the lines of standard input as zsh does when the tab key is pressed at their ends. Only the line editor
# of a terminal completes, so this starts a second zsh on a terminal of its own.
#   ask-zsh.zsh COMPLETION
zmodload zsh/zpty || exit 1
typeset -x ASK_COMPLETION=$1 ASK_LINES=$(mktemp) ASK_ANSWERS=$(mktemp)
cat >$ASK_LINES

typeset -x ASK_SETUP='
    PROMPT= RPROMPT= LISTMAX=10000 TERM=dumb
    autoload -Uz compinit && compinit -u -D
    autoload -Uz +X _files
    functions[_vexagpx_file]="$(<$ASK_COMPLETION)"
    compdef _vexagpx_file vexagpx
    # Adds the matches as ever, and writes them down.
    compadd() {
        local -a matches
        if [[ " ${@[1,(i)(-|--)]} " != *" -"[OAD]" "* ]]; then
            builtin compadd -A matches "$@"
            local match
            for match in $matches; do
                [[ ! -d $match || $match == */ ]] || match+=/
                print -r -- ${match%=} >>$ASK_ANSWERS
            done
        fi
        builtin compadd "$@"
    }
    ask() {
        local line
        for line in "${(@f)$(<$ASK_LINES)}"; do
            BUFFER=$line CURSOR=$#line
            zle complete-word
            print >>$ASK_ANSWERS
        done
        exit
    }
    zle -N ask
    bindkey "^X" ask
    print ready
'
zpty asked zsh -f -i
zpty -w asked 'eval "$ASK_SETUP"'
zpty -r asked seen '*ready*'
zpty -w -n asked $'\x18'
while zpty -r asked seen; do :; done
cat $ASK_ANSWERS
rm -f $ASK_LINES $ASK_ANSWERS
