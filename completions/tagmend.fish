
# Completes the item of the list in which the cursor stands; fish compares whole tokens, so that each
# candidate begins with what precedes the item.
function __tagmend_list -a names
    set -l token (commandline -ct)
    if string match -q -- '@*' $token
        for file in (string sub -s 2 -- $token)*
            test -d $file; and set file $file/
            echo @$file
        end
        return
    end
    set -l head (string match -r -- '^.*,' $token)
    set -l item (string replace -r -- '^.*,' '' $token)
    if test $names = removable
        printf '%s\n' "$head"$__tagmend_removable
    else if string match -q -- '*=*' $item
        set -l name (string replace -r -- '=.*' '' $item)
        printf '%s\n' "$head$name="(__tagmend_values (string lower -- $name))
    else
        printf '%s\n' "$head"(string replace \t =\t -- $__tagmend_settable)
    end
end

function __tagmend_charsets
    set -l token (commandline -ct)
    set -l head (string match -r -- '^.*,' $token)
    set -l item (string replace -r -- '^.*,' '' $token)
    if string match -q -- '*=*' $item
        set -l name (string replace -r -- '=.*' '' $item)
        printf '%s\n' "$head$name="{UTF-8,ISO-8859-1,ISO-8859-15,US-ASCII,EUC-JP,SHIFT_JIS}
    else
        printf '%s\n' "$head"{local,exif,iptc}=
    end
end
