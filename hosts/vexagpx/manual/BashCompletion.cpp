// SPDX-License-Identifier: MIT
#include <vexagpx/manual/Writers.h>

namespace vexagpx::manual {

namespace {

constexpr char kHead[] = R"(# bash completion for vexagpx                              -*- shell-script -*-

# Sets what the command takes: its commands, its options, and the kinds of its arguments; "..." after a kind says
# that any number of them may follow.
_vexagpx_command() {
    commands='' options='' arguments=()
    case $1 in
)";

constexpr char kWalk[] = R"(    esac
}

# Sets the words of the line up to the cursor as the tool gets them, for bash splits them at "=" and ":" too.
_vexagpx_words() {
    local line=${COMP_LINE:0:COMP_POINT} word i
    words=()
    for ((i = 0; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if ((i == 0)) || [[ $line == [[:space:]]* ]]; then
            words+=('')
            line=${line#"${line%%[![:space:]]*}"}
        fi
        ((i < COMP_CWORD)) || word=$line
        words[-1]+=$word
        line=${line#"$word"}
    done
}

# bash itself completes the names of files and folders, with blanks and quotes in them.
_vexagpx_file() { compopt -o bashdefault -o default; }
_vexagpx_folder() { compopt -o dirnames; }

_vexagpx() {
    local words
    _vexagpx_words
    local last=$((${#words[@]} - 1)) redirection='?([0-9&])[<>]*'
    ((last > 0)) || return
    local cur=${words[last]} prev=${words[last - 1]}
    COMPREPLY=()

    local command='' count=0 dashes='' word i
    local commands options arguments
    _vexagpx_command ''
    for ((i = 1; i < last; i++)); do
        word=${words[i]}
        if [[ $word == $redirection ]]; then
            [[ $word != *[\<\>\&\|] ]] || ((i++))
        elif [[ ! $dashes && $word == -?* ]]; then
            case $word in
            --) dashes=yes ;;
            @VALUE_OPTIONS@) ((i++)) ;;
            esac
        elif [[ " $commands " == *" $word "* ]]; then
            command+=${command:+ }$word
            _vexagpx_command "$command"
        else
            ((count++))
        fi
    done

    if [[ $cur == $redirection || $prev == $redirection && $prev == *[\<\>\&\|] ]]; then
        _vexagpx_file
        return
    fi
    if [[ ! $dashes ]]; then
        local split=''
        if [[ $cur == --*=* ]]; then
            prev=${cur%%=*} cur=${cur#*=} split=yes
        fi
        case $command:$prev in
)";

constexpr char kTail[] = R"(        esac
        if [[ $split ]]; then
            return
        elif [[ $cur == -* ]]; then
            mapfile -t COMPREPLY < <(compgen -W "$options" -- "$cur")
            return
        fi
    fi

    if [[ $commands ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$cur")
        return
    fi
    local kind=${arguments[count]-} kinds=${#arguments[@]}
    if ((kinds > 1 && count >= kinds - 1)) && [[ ${arguments[-1]} == ... ]]; then
        kind=${arguments[-2]}
    fi
    case $kind in
    file) _vexagpx_file ;;
    folder) _vexagpx_folder ;;
    esac
}
complete -F _vexagpx vexagpx
)";

std::string Kinds(const Command& command) {
    std::vector<std::string> kinds;
    for (const Positional& positional : command.positionals) {
        const Completion completion = positional.value.completion;
        kinds.emplace_back(completion == Completion::kFile     ? "file"
                           : completion == Completion::kFolder ? "folder"
                                                               : "nothing");
        if (positional.repeats)
            kinds.emplace_back("...");
    }
    return Join(kinds, " ");
}

std::string CommandCase(const Command& command) {
    std::vector<std::string> commands;
    for (const Command& below : command.commands)
        commands.push_back(below.name);
    std::vector<std::string> options;
    for (const Option& option : command.options)
        options.insert(options.end(), option.names.begin(), option.names.end());
    return "    " + Quoted(PathBelowTool(command)) + ")\n" +                //
           "        commands=" + Quoted(Join(commands, " ")) + "\n" +       //
           "        options=" + Quoted(Join(options, " ")) + "\n" +         //
           "        arguments=(" + Kinds(command) + ")\n" + "        ;;\n"; //
}

std::string ValueCase(const std::string& option, const Value& value) {
    std::string action = "return";
    if (value.completion == Completion::kFile)
        action = "_vexagpx_file; return";
    else if (value.completion == Completion::kFolder)
        action = "_vexagpx_folder; return";
    else if (value.completion == Completion::kWords)
        action = "mapfile -t COMPREPLY < <(compgen -P \"${2%\"$cur\"}\" -W " +
                 Quoted(Join(value.words, " ")) + " -- \"$cur\"); return";
    return "        " + option + ") " + action + " ;;\n";
}

} // namespace

std::string BashCompletion(const Command& tool) {
    const std::map<std::string, Value> values = OptionValues(tool);
    std::string text = kHead;
    for (const Command* command : AllOf(tool))
        text += CommandCase(*command);
    text += Replaced(kWalk, "@VALUE_OPTIONS@", NamesOf(values, " | "));
    for (const OtherValue& other : OtherValues(tool))
        text += ValueCase(Quoted(PathBelowTool(*other.command)) + ":" + other.option, other.value);
    for (const auto& [option, value] : values)
        text += ValueCase("*:" + option, value);
    return text + kTail;
}

} // namespace vexagpx::manual
