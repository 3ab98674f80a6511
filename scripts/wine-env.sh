# shellcheck shell=bash
# To be sourced. A private display and private Wine prefixes for the scripts that run what was built.
#
#   start_display                     a virtual screen of our own, or the display that KORVANE_DISPLAY names
#   prepare_prefix win32|win64 [NAME] makes build/wine/NAME (NAME is the architecture where not given) the
#                                     current prefix, creating it the first time; sets KORVANE_WINE to the
#                                     loader that runs programs in it
#   keep_to_core [CORE]               keeps this shell to one core, the last one where not given, and with it the
#                                     prefixes that it prepares from then on
#   allowed_cores                     the cores that this shell may use, one a line
#   have_wine64                       whether 64-bit programs can be run at all
#   stop_all                          ends both; installed as the EXIT trap (a script or a subshell with an EXIT
#                                     trap of its own calls it from there)
#
# A prefix serves one script at a time: the second one waits for the first. Separate NAMEs, or a folder of
# one's own in KORVANE_WINE_DIR, run side by side. KORVANE_WINEDEBUG sets Wine's debug channels.

korvane_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
korvane_wine_dir=$(realpath -m "${KORVANE_WINE_DIR:-$korvane_root/build/wine}")
korvane_loader32=/usr/lib/wine/wine
korvane_loader64=/usr/lib/wine/wine64
korvane_fonts=/usr/share/wine/fonts
korvane_prefix_recipe=2
korvane_prefixes=()
korvane_keeper_inputs=()
korvane_xvfb_pid=

wine_env_fail() {
    printf '%s\n' "$*" >&2
    return 1
}

have_wine64() {
    [[ -x $korvane_loader64 ]]
}

# --- display

start_display() {
    if [[ -n ${KORVANE_DISPLAY:-} ]]; then
        export DISPLAY=$KORVANE_DISPLAY
        return 0
    fi
    [[ -z $korvane_xvfb_pid ]] || return 0
    mkdir -p "$korvane_wine_dir"
    local log=$korvane_wine_dir/display-$BASHPID.log pipe number=
    # In a process group of its own, so that Ctrl-C does not take the screen away before Wine has ended, and bound
    # to this script's life should it be killed. Without -noreset the server restarts whenever the last
    # client leaves.
    exec {pipe}< <(exec setsid setpriv --pdeathsig TERM \
        Xvfb -displayfd 1 -screen 0 1600x1200x24 -noreset -nolisten tcp 2>"$log" </dev/null)
    korvane_xvfb_pid=$!
    read -r -t 30 number <&"$pipe" || true
    exec {pipe}<&-
    if [[ -z $number ]]; then
        tail -n 20 "$log" >&2
        wine_env_fail "Xvfb did not start (see $log)"
        return 1
    fi
    rm -f "$log"
    export DISPLAY=:$number
}

stop_display() {
    [[ -n $korvane_xvfb_pid ]] || return 0
    kill "$korvane_xvfb_pid" 2>/dev/null || true
    wait "$korvane_xvfb_pid" 2>/dev/null || true
    korvane_xvfb_pid=
}

# --- prefixes

# A program talks to Wine's server all the time. Between cores that may take ten times as long.
keep_to_core() {
    taskset -cp "${1:-$(allowed_cores | tail -n 1)}" "$BASHPID" >/dev/null
}

allowed_cores() {
    local first last
    taskset -cp "$BASHPID" | sed 's/.*: //' | tr , '\n' | while IFS=- read -r first last; do
        seq "$first" "${last:-$first}"
    done
}

# "<pid> <start time>" of a living process: the pid alone may be somebody else's by now.
process_identity() {
    local stat fields
    { read -r stat <"/proc/$1/stat"; } 2>/dev/null || return 1
    read -ra fields <<<"${stat##*) }"
    [[ ${fields[0]} != Z ]] || return 1
    printf '%s %s\n' "$1" "${fields[19]}"
}

# Takes the prefix for this script unless a living one has it.
try_claim() {
    (
        flock 9
        owner=$(cat "$1" 2>/dev/null) || true
        if [[ -n $owner && $(process_identity "${owner%% *}") = "$owner" ]]; then
            exit 1
        fi
        process_identity $$ >"$1"
    ) 9>"$korvane_wine_dir/claims.lock"
}

claim_prefix() {
    local file=$WINEPREFIX.owner told=no
    until try_claim "$file"; do
        if [[ $told = no ]]; then
            printf 'waiting: %s is in use by process %s\n' "$WINEPREFIX" "$(cut -d' ' -f1 "$file")" >&2
            told=yes
        fi
        sleep 1
    done
}

# Wine's server and services must not keep the pipes of this script's caller open: hence the redirections.
in_prefix() {
    "$@" </dev/null >>"$WINEPREFIX.log" 2>&1
}

end_wineserver() {
    [[ -d $WINEPREFIX ]] || return 0
    in_prefix wineserver -k || true
    in_prefix timeout 20 wineserver -w || true
}

# The server stays while no program runs: starting it anew for each test costs more than most tests.
start_wineserver() {
    in_prefix wineserver -p
}

# Debian's Wine does not load the folder of Wine's own fonts: caption buttons would be boxes, and texts a substitute's.
add_fonts() {
    local folder=$WINEPREFIX/drive_c/windows/Fonts name
    mkdir -p "$folder"
    for name in marlett tahoma tahomabd; do
        [[ ! -f $korvane_fonts/$name.ttf ]] || cp "$korvane_fonts/$name.ttf" "$folder/" || return
    done
}

create_prefix() {
    # What an interrupted creation left behind is not to be trusted.
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    start_wineserver || return
    in_prefix "$KORVANE_WINE" wineboot -i || return
    add_fonts || return
    # Without a window manager, a managed window's end waits for a state that nobody sets.
    in_prefix "$KORVANE_WINE" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /t REG_SZ /d N /f || return
    # A crash is to end the process, not to wait in a dialog.
    in_prefix "$KORVANE_WINE" reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f || return
    # The registry is in the files only after the server's end.
    end_wineserver
    printf '%s\n' "$korvane_prefix_recipe" >"$WINEPREFIX/korvane-stamp"
}

# The desktop closes a second after its last program, and a program that starts while it closes hangs for ten.
# A program that waits for input keeps it open; another one, which shows nothing, opens it now.
keep_desktop() {
    local input
    exec {input}> >(exec "$KORVANE_WINE" cmd >/dev/null 2>&1)
    korvane_keeper_inputs+=("$input")
    in_prefix "$KORVANE_WINE" rundll32 user32.dll,GetDesktopWindow
}

prepare_prefix() {
    local arch=$1 name=${2:-$1}
    case $arch in
        win32) KORVANE_WINE=$korvane_loader32 ;;
        win64) KORVANE_WINE=$korvane_loader64 ;;
        *) wine_env_fail "prepare_prefix: unknown architecture $arch" || return ;;
    esac
    [[ -x $KORVANE_WINE ]] || wine_env_fail "$KORVANE_WINE is missing: run scripts/setup.sh" || return
    [[ -n ${DISPLAY:-} ]] || wine_env_fail "prepare_prefix: start_display comes first" || return
    mkdir -p "$korvane_wine_dir"
    export KORVANE_WINE
    export WINEPREFIX=$korvane_wine_dir/$name
    export WINEARCH=$arch
    export WINEDEBUG=${KORVANE_WINEDEBUG:--all}
    # winemenubuilder would write menu entries into the user's own folders.
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    export LANG=C.UTF-8 LC_ALL=C.UTF-8

    local mine
    for mine in ${korvane_prefixes[@]+"${korvane_prefixes[@]}"}; do
        [[ $mine != "$WINEPREFIX" ]] || return 0
    done

    claim_prefix
    korvane_prefixes+=("$WINEPREFIX")
    # A server that is still there was left behind by a killed script and belongs to a display that is gone.
    end_wineserver
    : >"$WINEPREFIX.log"
    if [[ $(cat "$WINEPREFIX/korvane-stamp" 2>/dev/null) != "$korvane_prefix_recipe" ]] && ! create_prefix; then
        tail -n 20 "$WINEPREFIX.log" >&2
        wine_env_fail "the Wine prefix $WINEPREFIX could not be created (see $WINEPREFIX.log)"
        return 1
    fi
    start_wineserver && keep_desktop || wine_env_fail "Wine does not start (see $WINEPREFIX.log)" || return
}

stop_all() {
    local prefix input
    for prefix in ${korvane_prefixes[@]+"${korvane_prefixes[@]}"}; do
        WINEPREFIX=$prefix end_wineserver
        rm -f "$prefix.owner"
    done
    korvane_prefixes=()
    for input in ${korvane_keeper_inputs[@]+"${korvane_keeper_inputs[@]}"}; do
        exec {input}>&-
    done
    korvane_keeper_inputs=()
    stop_display
}

trap stop_all EXIT
