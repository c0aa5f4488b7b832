# Shared by the stand-ins for the device-manager vendor's tools (7z.exe, executesql.exe,
# svccontrol.exe, setenvironmentvariable.exe, createaccessdatasource.exe). They are NOT the
# vendor's programs: they let a Linux till run the installer for real in tests. Each one records
# its whole argument list in <till root>/standin-calls.log, one call a line, every argument in
# square brackets so that blanks inside an argument stay visible.
#
# Sourced, never run; it must sit beside the tools that source it.

: "${PARVANE_ROOT:?PARVANE_ROOT must name the till folder}"

standin_record() {
    local line=${0##*/} argument
    for argument in "$@"; do
        line+=" [$argument]"
    done
    printf '%s\n' "$line" >>"$PARVANE_ROOT/standin-calls.log"
}

# The stored name in folder $1 matching name $2: the exact name when it exists, else the first
# case-insensitive match, else nothing.
standin_stored_name() {
    local folder=$1 name=$2 entry stored lowered=${2,,}
    if [[ -e $folder/$name ]]; then
        printf '%s' "$name"
        return
    fi
    shopt -s nullglob dotglob
    for entry in "$folder"/*; do
        stored=${entry##*/}
        if [[ ${stored,,} == "$lowered" ]]; then
            printf '%s' "$stored"
            break
        fi
    done
    shopt -u nullglob dotglob
}

# The host path of a Windows path, by the till's drive rules: C: is $PARVANE_ROOT/drive_c, Z: is
# "/", another letter $PARVANE_ROOT/drive_<letter>; "\" and "/" both separate; each existing
# component is found case-insensitively; a missing one keeps the case given.
standin_hostpath() {
    local path=${1//\\//} base rest part found matching=1
    if [[ $path =~ ^[A-Za-z]: ]]; then
        local letter=${path:0:1}
        letter=${letter,,}
        rest=${path:2}
        if [[ $letter == z ]]; then
            base=""
        else
            base=$PARVANE_ROOT/drive_$letter
        fi
    elif [[ $path == /* ]]; then
        base=$PARVANE_ROOT/drive_c
        rest=$path
    else
        base=$PWD
        rest=$path
    fi
    local -a parts
    IFS=/ read -r -a parts <<<"$rest"
    for part in "${parts[@]}"; do
        case $part in
        '' | .) continue ;;
        ..)
            base=${base%/*}
            continue
            ;;
        esac
        if ((matching)); then
            found=$(standin_stored_name "${base:-/}" "$part")
            if [[ -n $found ]]; then
                part=$found
            else
                matching=0
            fi
        fi
        base+=/$part
    done
    [[ $1 == *[\\/] ]] && base+=/
    printf '%s' "${base:-/}"
}

# The value following the option $1 in the rest of the arguments ("-name x" gives x).
standin_option() {
    local wanted=$1
    shift
    while (($# > 1)); do
        if [[ ${1,,} == "${wanted,,}" ]]; then
            printf '%s' "$2"
            return
        fi
        shift
    done
}
