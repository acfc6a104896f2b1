# Completion of halvorn-section for bash: options and their choices as --help prints them, files, and
# the names of profiles and families in letters of either case, with the catalogues that the command
# line and HALVORN_CATALOGUES name.

# Prints what the tool $1 lists with the option $2 and the catalogues that follow; what cannot be read
# is left out.
_halvorn_section_list() {
    local tool=$1 option=$2 text
    shift 2
    text=$("$tool" "$@" "$option" 2> /dev/null)
    if [[ -z $text ]]; then text=$("$tool" "$option" 2> /dev/null); fi
    if [[ -z $text ]]; then text=$(HALVORN_CATALOGUES='' "$tool" "$option" 2> /dev/null); fi
    printf '%s\n' "$text"
}

# Prints a word of the command line as a program gets it: without its quotes.
_halvorn_section_unquoted() {
    local word=$1
    case $word in
        \"*) word=${word#\"} word=${word%\"} word=${word//\\\"/\"} word=${word//\\\\/\\} ;;
        \'*) word=${word#\'} word=${word%\'} ;;
        *) word=${word//\\/} word=${word/#\~/$HOME} ;;
    esac
    printf '%s' "$word"
}

# Prints, one per line, what the word $1 may become at a place after the word $2.
_halvorn_section_words() {
    local word=$1 before=$2 tool=$3 choices=''
    shift 3
    case $before in
        --list-profiles)
            _halvorn_section_list "$tool" --list-families "$@" |
                awk 'NR > 1 { print $1; for (i = 3; i <= NF; ++i) { sub(",", "", $i); print $i } }' |
                sort -u
            return ;;
    esac
    if [[ $word == -* ]]; then
        "$tool" --help | grep -oE '^  (-h,)?--[a-z-]+' | grep -oE -- '--[a-z-]+'
        return
    fi
    if [[ $before =~ ^--[a-z-]+$ ]]; then
        choices=$("$tool" --help | sed -nE "s/^  $before [A-Z]+:\{([^}]*)\}.*/\1/p")
    fi
    if [[ -n $choices ]]; then
        tr ',' '\n' <<< "$choices"
    else
        _halvorn_section_list "$tool" --list-profiles "$@"
    fi
}

_halvorn_section() {
    local tool=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} before='' i candidate known file
    local -a catalogues=()
    if ((COMP_CWORD > 0)); then before=${COMP_WORDS[COMP_CWORD - 1]}; fi
    # Bash splits --option=value at the sign, unless COMP_WORDBREAKS lacks it.
    if [[ $word == = ]]; then
        word=''
    elif [[ $before == = ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; ++i)); do
        file=''
        case ${COMP_WORDS[i]} in
            --catalogue=*) file=${COMP_WORDS[i]#*=} ;;
            --catalogue)
                if [[ ${COMP_WORDS[i + 1]} == = ]]; then ((++i)); fi
                if ((i + 1 < COMP_CWORD)); then file=${COMP_WORDS[i + 1]}; fi ;;
        esac
        if [[ -n $file ]]; then catalogues+=(--catalogue "$(_halvorn_section_unquoted "$file")"); fi
    done
    COMPREPLY=()
    # As it is meant: blanks of names stand behind a backslash or in quotes.
    local plain=${word//\\/}
    plain=${plain#[\"\']}
    case $before in
        # Numbers, forces and layers are the user's own.
        --threads | --layer | --chord-tolerance | --join-tolerance | --dx | --dy | --density | \
            --tolerance | --poisson | --forces | --find) return ;;
        --figure | --catalogue) ;;
        *)
            while IFS= read -r candidate; do
                known=${candidate,,}
                # Names may be typed without their blanks.
                if [[ $known == "${plain,,}"* || ${known// /} == "${plain,,}"* ]]; then
                    _halvorn_section_add "$word" "$candidate"
                fi
            done < <(_halvorn_section_words "$word" "$before" "$tool" "${catalogues[@]}") ;;
    esac
    if [[ $word == -* || $before == --list-* || $before == --unit || $before == --figure-* ]]; then
        return
    fi
    while IFS= read -r candidate; do
        if [[ -d ${candidate/#\~/$HOME} ]]; then
            candidate+=/
            compopt -o nospace 2> /dev/null
        fi
        _halvorn_section_add "$word" "$candidate"
    done < <(compgen -f -- "$plain")
}

# Adds a candidate as the command line has it: quoted, unless the word $1 begins with a quote.
_halvorn_section_add() {
    local quoted
    printf -v quoted '%q' "$2"
    if [[ $1 == [\"\']* ]]; then quoted=$2; fi
    COMPREPLY+=("${quoted/#\\\~/\~}")
}

complete -F _halvorn_section halvorn-section
