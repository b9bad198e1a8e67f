# SPDX-License-Identifier: MIT
# Completes the lines of standard input as fish does when the tab key is pressed at their ends.
#   ask-fish.fish COMPLETION
source $argv[1]
while read -l line
    complete -C "$line" | string replace -r '\t.*' ''
    echo
end
