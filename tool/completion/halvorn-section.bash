# Completion of halvorn-section for bash: options and their choices as --help prints them, files, and
# the names of profiles and families in letters of either case, with the catalogues that the command
# line and HALVORN_CATALOGUES name.

# Prints, one per line, what the word $1 may become at a place after the word $2.
_halvorn_section_words() {
    local word=$1 before=$2 tool=$3 choices=''
    shift 3
    case $before in
        --list-profiles)
            "$tool" "$@" --list-families 2> /dev/null |
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
        "$tool" "$@" --list-profiles 2> /dev/null
    fi
}

_halvorn_section() {
    local tool=${COMP_WORDS[0]} word=${COMP_WORDS[COMP_CWORD]} before='' i candidate
    local -a catalogues=()
    if ((COMP_CWORD > 0)); then before=${COMP_WORDS[COMP_CWORD - 1]}; fi
    for ((i = 1; i + 1 < COMP_CWORD; ++i)); do
        if [[ ${COMP_WORDS[i]} == --catalogue ]]; then
            catalogues+=(--catalogue "${COMP_WORDS[i + 1]/#\~/$HOME}")
        fi
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
                if [[ ${candidate,,} == "${plain,,}"* ]]; then
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
