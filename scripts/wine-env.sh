# Where the Windows build's emulator lives; sourced by the other scripts ($root is the checkout).
jw32_cache=${JW32_CACHE:-${XDG_CACHE_HOME:-${HOME:-$root/build}/.cache}/jw32}
export JW32_WINE=/usr/lib/wine/wine64
export WINEDLLPATH=$jw32_cache/wine-i386/usr/lib/i386-linux-gnu/wine
export WINEPREFIX=$root/build/wine
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree=d;mshtml=d;winemenubuilder.exe=d"
