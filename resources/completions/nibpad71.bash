# bash completion for nibpad71, nib-basic, nib-debuglog and nib-lsp

# Prints the folder of the accounts of host connection $1, as hosts.conf or the default has it.
_nib_root()
{
    local config=${XDG_CONFIG_HOME:-$HOME/.config}/Orlin/hosts.conf section= root= line key value
    if [[ -r $config ]]; then
        while IFS= read -r line || [[ -n $line ]]; do
            line=${line%$'\r'}
            if [[ $line == \[*\]* ]]; then
                section=${line#\[}
                section=${section%%\]*}
            elif [[ $line == *=* && ${section,,} == "${1,,}" ]]; then
                key=${line%%=*}
                key=${key//[[:blank:]]/}
                value=${line#*=}
                value=${value#"${value%%[![:blank:]]*}"}
                [[ ${key,,} == root ]] && root=${value%"${value##*[![:blank:]]}"}
            fi
        done <"$config"
    fi
    [[ $root == '~/'* ]] && root=$HOME/${root#'~/'}
    printf '%s' "${root:-${XDG_DATA_HOME:-$HOME/.local/share}/Orlin/Nib/Accounts}"
}

# Adds the names in folder $1 that begin with $2, written for the shell; $3 is -d for folders, -f for files. A name of a
# file has some characters of an item's id as %XX.
_nib_names()
{
    local path name
    for path in "$1"/*; do
        [[ $3 == -d && -d $path || $3 == -f && -f $path ]] || continue
        name=${path##*/}
        if [[ $name == *%[0-9A-Fa-f][0-9A-Fa-f]* ]]; then
            name=${name//\\/\\\\}
            printf -v name '%b' "${name//%/\\x}"
        fi
        [[ $name == "$2"* ]] && COMPREPLY+=("$(printf '%q' "$name")")
    done
}

# Takes the backslashes of the shell out of a word.
_nib_plain()
{
    local word=$1
    word=${word//\\\\/$'\1'}
    word=${word//\\/}
    word=${word//$'\1'/\\}
    word=${word#[\'\"]}
    printf '%s' "${word%[\'\"]}"
}

_nib_hosts()
{
    local config=${XDG_CONFIG_HOME:-$HOME/.config}/Orlin/hosts.conf host
    local -a hosts=('*')
    [[ -r $config ]] && mapfile -t -O 1 hosts < <(sed -n 's/^\[\([^]*]*\)\].*/\1/p' "$config")
    for host in "${hosts[@]}"; do
        [[ $host == "$1"* ]] && COMPREPLY+=("$(printf '%q' "$host")")
    done
}

_nibpad71()
{
    local cur prev words cword
    _init_completion -n = || return

    local host='*' account= file= word i
    for ((i = 1; i < cword; i++)); do
        word=$(_nib_plain "${words[i]}")
        case ${word^^} in
            /H=*) host=${word:3} ;;
            /A=*) account=${word:3} ;;
            /F=*) file=${word:3} ;;
        esac
    done

    local value
    value=$(_nib_plain "${cur:3}")
    case ${cur^^} in
        /T=*) [[ mvdb == "$value"* ]] && COMPREPLY=(mvdb) ;;
        /H=*) _nib_hosts "$value" ;;
        /A=*) _nib_names "$(_nib_root "$host")" "$value" -d ;;
        /F=*) [[ $account ]] && _nib_names "$(_nib_root "$host")/$account" "$value" -d ;;
        /I=*) [[ $account && $file ]] && _nib_names "$(_nib_root "$host")/$account/$file" "$value" -f ;;
        -*) COMPREPLY=($(compgen -W '-h --help --version --' -- "$cur")) ;;
        / | /[A-Z])
            compopt -o nospace
            COMPREPLY=($(compgen -W '/T= /H= /A= /F= /I= /L' -- "${cur^^}"))
            [[ $cur == / ]] && COMPREPLY+=($(compgen -d -S / -- "$cur"))
            ;;
        *) _filedir ;;
    esac
    case ${cur^^} in
        # Where readline takes "=" for the end of a word, it keeps what stands before.
        /[THAFI]=*) [[ $COMP_WORDBREAKS == *=* ]] || COMPREPLY=("${COMPREPLY[@]/#/${cur:0:3}}") ;;
    esac
} && complete -F _nibpad71 nibpad71

# Run in the folder of an account: a file, then an item of it.
_nib_basic()
{
    local cur prev words cword
    _init_completion || return

    local first=1
    [[ ${words[1]-} == -- ]] && first=2
    if [[ $cur == -* && $first -eq 1 ]]; then
        COMPREPLY=($(compgen -W '--help --version --' -- "$cur"))
    elif ((cword == first)); then
        _nib_names . "$(_nib_plain "$cur")" -d
    elif ((cword == first + 1)); then
        _nib_names "./$(_nib_plain "${words[first]}")" "$(_nib_plain "$cur")" -f
    fi
} && complete -F _nib_basic nib-basic

_nib_debuglog()
{
    local cur prev words cword
    _init_completion -n = || return

    case $prev in
        --mask) COMPREPLY=($(compgen -W '1 2 3 4 5 6 7 16 23' -- "$cur")) ;;
        *) COMPREPLY=($(compgen -W '--mask --list --help --version' -- "$cur")) ;;
    esac
} && complete -F _nib_debuglog nib-debuglog

_nib_lsp()
{
    local cur prev words cword
    _init_completion || return

    case $prev in
        --log) _filedir ;;
        --check) _filedir -d ;;
        --dialect) COMPREPLY=($(compgen -W 'common none' -- "$cur")) ;;
        *) COMPREPLY=($(compgen -W '--check --dialect --log --stdio --help --version' -- "$cur")) ;;
    esac
} && complete -F _nib_lsp nib-lsp
