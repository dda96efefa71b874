# Where the emulator of the Windows builds lives; sourced by the other scripts, which set $root (the
# checkout) and $bits (32 or 64) before. Each build has a prefix of its own.
jw32_cache=${JW32_CACHE:-${XDG_CACHE_HOME:-${HOME:-$root/build}/.cache}/jw32}
export JW32_WINE=/usr/lib/wine/wine64
export WINEPREFIX=$root/build/wine$bits
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree=d;mshtml=d;winemenubuilder.exe=d"
if [ "$bits" = 32 ]; then
    export WINEDLLPATH=$jw32_cache/wine-i386/usr/lib/i386-linux-gnu/wine
fi

# Without a whole prefix Wine starts nothing, reports nothing and still gives 0.
require_prefix() {
    [ ! -e "$WINEPREFIX/ready" ] || return 0
    echo "${0##*/}: $WINEPREFIX is not ready: run scripts/setup.sh wine$bits" >&2
    exit 1
}
