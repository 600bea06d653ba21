
# Completes the item of the list in which the cursor stands.
_tagmend_list() { # settable or removable
    if compset -P @; then
        _files
        return
    fi
    compset -P '*,'
    local -a candidates
    if [[ $1 == settable && $PREFIX == *=* ]]; then
        candidates=(${(f)_tagmend_values[${${PREFIX%%=*}:l}]})
        compset -P 1 '*='
        _describe -V value candidates -S ''
    elif [[ $1 == settable ]]; then
        candidates=($_tagmend_settable)
        _describe field candidates -S '='
    else
        candidates=($_tagmend_removable)
        _describe field candidates -S ''
    fi
}

_tagmend_charsets() {
    compset -P '*,'
    if compset -P 1 '*='; then
        compadd -S '' UTF-8 ISO-8859-1 ISO-8859-15 US-ASCII EUC-JP SHIFT_JIS
    else
        compadd -S '=' local exif iptc
    fi
}

_tagmend() {
    _arguments -s -S -A '-*' $_tagmend_options '*:file:_files'
}

_tagmend "$@"
