# Sourced by test.sh and start.sh: a virtual display and a wine prefix in the
# build tree, with a wineserver that can stay up until km_wine_end.

export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml=" # no Mono or Gecko install dialogs

# Starts Xvfb on the first free display number and points DISPLAY at it.
km_xvfb_start() {
    local fifo display
    fifo=$(mktemp -u)
    mkfifo "$fifo"
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$fifo" </dev/null >/dev/null 2>&1 &
    km_xvfb_pid=$!
    if ! read -r -t 30 display <"$fifo"; then
        rm -f "$fifo"
        echo "Xvfb did not start" >&2
        return 1
    fi
    rm -f "$fifo"
    export DISPLAY=:$display
}

# Makes the prefix $1 the first time and brings up wine's own services now,
# so that they don't hold on to the output of the first program that would
# start them. $2 is Y or N: N leaves the windows to wine rather than a window
# manager, which is what a bare virtual display needs (wine otherwise waits
# two seconds on every top-level window for a manager that isn't there).
# With "persistent" as $3 the wineserver stays up until km_wine_end.
km_wine_start() {
    export WINEPREFIX=$1
    local managed=$2 started=$SECONDS
    mkdir -p "$WINEPREFIX"
    if [ "${3:-}" = persistent ]; then
        # The server must not hold on to this script's output.
        if ! wineserver -p </dev/null >/dev/null 2>&1; then
            echo "== ending the wineserver left running on $WINEPREFIX"
            wineserver -k || true
            wineserver -w
            wineserver -p </dev/null >/dev/null 2>&1
        fi
        km_wine_persistent=$WINEPREFIX
    fi
    if [ ! -f "$WINEPREFIX/system.reg" ]; then
        echo "== making the wine prefix $WINEPREFIX"
        wine wineboot -i </dev/null >/dev/null 2>&1
        echo "== wine prefix made in $((SECONDS - started)) s"
    fi
    wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d "$managed" /f \
        </dev/null >/dev/null 2>&1
}

# Ends what this session started: the persistent wineserver with its
# programs, and Xvfb.
km_wine_end() {
    if [ -n "${km_wine_persistent:-}" ]; then
        WINEPREFIX=$km_wine_persistent wineserver -k 2>/dev/null || true
        WINEPREFIX=$km_wine_persistent wineserver -w 2>/dev/null || true
    fi
    if [ -n "${km_xvfb_pid:-}" ]; then
        kill "$km_xvfb_pid" 2>/dev/null || true
        wait "$km_xvfb_pid" 2>/dev/null || true
    fi
}
