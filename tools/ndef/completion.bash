# Completion of the ndef command for bash.
_ndef()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} input='--raw --hex --base64 --tlv --no-limit --help' files=yes words
    # Bash splits --color=auto into three words.
    [[ $current == = ]] && current=
    [[ $previous == = ]] && previous=${COMP_WORDS[COMP_CWORD - 2]}
    if ((COMP_CWORD == 1)); then
        words='show check json make --help --version' files=
    else
        case $command in
            show) words="--bytes --all --color= $input" ;;
            check) words="--quiet $input" ;;
            json) words="--output $input" ;;
            make)
                if ((COMP_CWORD == 2)); then
                    words='json text uri poster --help' files=
                else
                    words='--output --format --id --help'
                    case ${COMP_WORDS[2]} in
                        json) words='--output --format --no-limit --help' ;;
                        text) words+=' --language --utf16' files= ;;
                        uri) files= ;;
                        poster) words+=' --title --action --icon --type --size --no-limit' files= ;;
                    esac
                fi
                ;;
        esac
    fi
    case $previous in
        --color) words='auto always never' files= ;;
        --format) words='raw hex base64 c' files= ;;
        --action) words='do save open' files= ;;
        -o | --output | --icon) words= files=yes ;;
        --id | --language | --title | --type | --size) words= files= ;;
    esac
    COMPREPLY=()
    [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    if [[ -n $files && $current != -* ]]; then
        compopt -o filenames
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$current")
    fi
    [[ ${COMPREPLY[0]} != *= ]] || compopt -o nospace
}
complete -F _ndef ndef
