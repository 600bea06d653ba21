
# The words of the command line up to the cursor, as the shell passes them on: readline also breaks
# them at "=", ":" and "@".
_tagmend_split_line() {
    local rest=${COMP_LINE:0:COMP_POINT} piece i
    words=()
    for ((i = 0; i <= COMP_CWORD; i++)); do
        piece=${COMP_WORDS[i]}
        if [[ $i -eq 0 || $rest == [[:blank:]]* ]]; then
            rest=${rest#"${rest%%[![:blank:]]*}"}
            words+=('')
        fi
        ((i < COMP_CWORD)) || piece=$rest
        words[-1]+=$piece
        rest=${rest#"$piece"}
    done
}

# Splits what is typed of a list into the item that the cursor stands in and what precedes it. A comma
# inside a quoted value is part of the value. Fails there: nothing can be offered.
_tagmend_split_list() {
    local list=$1 outer='' inner='' char start=0 i
    for ((i = 0; i < ${#list}; i++)); do
        char=${list:i:1}
        if [[ $char == "$outer" ]]; then
            outer=
        elif [[ -z $outer && $char == [\'\"] ]]; then
            outer=$char
        elif [[ $char == \" ]]; then
            [[ $inner ]] && inner='' || inner=1
        elif [[ $char == , && -z $inner ]]; then
            start=$((i + 1))
        fi
    done
    item=${list:start}
    [[ $item == [\'\"]* ]] && item=${item:1}
    head=${list%"$item"}
    [[ -z $inner ]]
}

# Offers those of the words that begin with what is typed. Readline replaces only the piece behind its
# last word break.
_tagmend_offer() { # what precedes the word, what is typed of it, what follows it, the words
    local base=${words[-1]%"$piece"}
    mapfile -t COMPREPLY < <(compgen -P "$1" -S "$3" -W "$4" -- "$2")
    COMPREPLY=("${COMPREPLY[@]#"$base"}")
    compopt -o nospace
}

_tagmend_list_file() { # "@" and what is typed of the name
    local base=${words[-1]%"$piece"} i
    mapfile -t COMPREPLY < <(compgen -f -- "${1#@}")
    for i in "${!COMPREPLY[@]}"; do
        if [[ -d ${COMPREPLY[i]} ]]; then
            COMPREPLY[i]+=/
            compopt -o nospace
        fi
    done
    COMPREPLY=("${COMPREPLY[@]/#/@}")
    COMPREPLY=("${COMPREPLY[@]#"$base"}")
}

_tagmend_fields() { # what precedes the list, the list, the names, what follows a name
    local head item
    if [[ $2 == @* ]]; then
        _tagmend_list_file "$2"
        return
    fi
    _tagmend_split_list "$2" || return
    if [[ $4 && $item == *=* ]]; then
        local name=${item%%=*} value=${item#*=}
        _tagmend_offer "$1$head$name=" "$value" '' "${_tagmend_values[${name,,}]}"
    else
        _tagmend_offer "$1$head" "$item" "$4" "$3"
    fi
}

_tagmend_charsets() { # what precedes the list, the list
    local head item
    _tagmend_split_list "$2" || return
    if [[ $item == *=* ]]; then
        _tagmend_offer "$1$head${item%%=*}=" "${item#*=}" '' \
            'UTF-8 ISO-8859-1 ISO-8859-15 US-ASCII EUC-JP SHIFT_JIS'
    else
        _tagmend_offer "$1$head" "$item" '=' 'local exif iptc'
    fi
}

_tagmend_argument() { # option letter, what precedes its argument in the word, the argument
    case $1 in
        a) _tagmend_fields "$2" "$3" "$_tagmend_settable" '=' ;;
        r) _tagmend_fields "$2" "$3" "$_tagmend_removable" '' ;;
        e) mapfile -t COMPREPLY < <(compgen -P "$2" -W 'e f i a' -- "$3") ;;
        p) _tagmend_charsets "$2" "$3" ;;
    esac
}

_tagmend() {
    local piece=$2 words word rest letter='' i last
    COMPREPLY=()
    _tagmend_split_line
    last=$((${#words[@]} - 1))
    for ((i = 1; i <= last; i++)); do
        word=${words[i]}
        if [[ $letter ]]; then # this word is the argument of the one before
            if ((i == last)); then
                _tagmend_argument "$letter" '' "$word"
                return
            fi
            letter=
            continue
        fi
        [[ $word == -* && $word != -- ]] || break # options end here
        # In a cluster, the first letter that takes an argument takes the rest or the next word.
        rest=${word#-}
        while [[ $rest && $_tagmend_with_argument != *"${rest:0:1}"* ]]; do
            rest=${rest:1}
        done
        letter=${rest:0:1} rest=${rest:1}
        if ((i == last)); then
            if [[ $rest ]]; then
                _tagmend_argument "$letter" "${word%"$rest"}" "$rest"
            else
                mapfile -t COMPREPLY < <(compgen -W "$_tagmend_options" -- "$word")
            fi
            return
        fi
        [[ -z $rest ]] || letter=
    done
    compopt -o default # the names of files
}

complete -F _tagmend tagmend
