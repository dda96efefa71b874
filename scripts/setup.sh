#!/usr/bin/env bash
# Installs what a build needs and is not there yet:
#   setup.sh demo      the examples alone
#   setup.sh host      the Linux build
#   setup.sh style     the same, and the tools that check the sources
#   setup.sh coverage  those of the Linux build, and the tool that measures coverage
#   setup.sh windows   both Windows builds: the cross compilers and the emulator
#   setup.sh wine64    a place for the emulator to run 64-bit programs in
#   setup.sh wine32    the same for 32-bit programs, with the system modules that these need
# With everything in place it does nothing and takes no time; what an interrupted run left half made
# is made anew.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

demo_packages=(g++ cmake ninja-build binutils-mingw-w64-x86-64)
host_packages=("${demo_packages[@]}" googletest libbenchmark-dev pkg-config python3 doxygen
               python3-olefile 7zip)
windows_packages=(wine64 g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix xvfb xauth)

missing_of() {
    local package
    for package in "$@"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            echo "$package"
    done
}

install_packages() {
    local missing
    mapfile -t missing < <(missing_of "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    local command="apt-get install -y --no-install-recommends ${missing[*]}"
    if [ "$(id -u)" -ne 0 ]; then
        echo "setup: these packages are missing; install them as root, then start again:" >&2
        echo "    sudo apt-get update && sudo $command" >&2
        exit 1
    fi
    echo "setup: installing ${missing[*]}"
    dpkg --configure -a >/dev/null || true  # what an interrupted installation left
    apt-get update -q >/dev/null || true
    DEBIAN_FRONTEND=noninteractive $command >/dev/null ||
        { echo "setup: could not install ${missing[*]}" >&2; exit 1; }
}

# The 32-bit system modules of Wine come from Debian's i386 package, unpacked and not installed, so
# that the machine's own package list stays as it is.
fetch_wine_modules() {
    [ ! -d "$WINEDLLPATH/i386-windows" ] || return 0
    echo "setup: fetching the 32-bit modules of Wine"
    local work=$jw32_cache/wine-download
    rm -rf "$work" && mkdir -p "$work"/{state/lists/partial,cache/archives/partial}
    touch "$work/status"
    cat > "$work/apt.conf" <<CONF
APT::Architecture "i386";
APT::Architectures { "i386"; };
APT::Sandbox::User "root";
Dir::State "$work/state";
Dir::State::status "$work/status";
Dir::Cache "$work/cache";
CONF
    (cd "$work" && APT_CONFIG=$work/apt.conf apt-get update -q >update.log 2>&1 || true
     APT_CONFIG=$work/apt.conf apt-get download -q libwine >download.log 2>&1) ||
        { echo "setup: the i386 package 'libwine' could not be downloaded:" >&2
          cat "$work"/*.log >&2; exit 1; }
    dpkg -x "$work"/libwine_*_i386.deb "$work/unpacked"
    rm -rf "$jw32_cache/wine-i386" && mv "$work/unpacked" "$jw32_cache/wine-i386"
    rm -rf "$work"
}

# Wine links folders such as Music to the user's home directory. Programs under test must not get
# there: the links become plain folders.
unlink_home() {
    local link
    find "$WINEPREFIX/drive_c/users" -type l -print0 | while IFS= read -r -d '' link; do
        rm "$link" && mkdir "$link"
    done
}

# A fresh prefix: drive C: as Wine makes it, and D: as a second drive for the tests.
make_prefix() {
    local system=$WINEPREFIX/drive_c/windows/$1
    [ ! -e "$WINEPREFIX/ready" ] || return 0
    echo "setup: making the Wine prefix for programs of $bits bits"
    local attempt
    for attempt in 1 2 3; do  # on a busy machine Wine gives up waiting for its own services
        rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX"
        "$JW32_WINE" wineboot -i >/dev/null 2>&1 || true
        timeout 120 "${JW32_WINE%/*}/wineserver64" -w || true  # the registry is written when the last program ends
        [ -e "$system/kernel32.dll" ] && grep -qs ProductOptions "$WINEPREFIX/system.reg" && break
        [ "$attempt" -lt 3 ] ||
            { echo "setup: Wine made no whole prefix for $bits bits in $WINEPREFIX" >&2; exit 1; }
    done
    unlink_home
    mkdir -p "$WINEPREFIX/drive_d" && ln -sfn ../drive_d "$WINEPREFIX/dosdevices/d:"
    touch "$WINEPREFIX/ready"
}

# The demo is content with these tools wherever they come from.
has_demo_tools() {
    command -v g++ && command -v cmake && command -v ninja &&
        command -v x86_64-w64-mingw32-windres
}

case ${1:-} in
    demo) has_demo_tools >/dev/null || install_packages "${demo_packages[@]}" ;;
    host) install_packages "${host_packages[@]}" ;;
    style) install_packages "${host_packages[@]}" git clang clang-format ;;
    coverage) install_packages "${host_packages[@]}" gcovr ;;
    windows) install_packages "${host_packages[@]}" "${windows_packages[@]}" ;;
    wine64)
        bits=64 && source "$root/scripts/wine-env.sh"
        make_prefix system32 ;;
    wine32)
        bits=32 && source "$root/scripts/wine-env.sh"
        fetch_wine_modules
        make_prefix syswow64 ;;
    *) echo "usage: setup.sh demo|host|style|coverage|windows|wine64|wine32" >&2; exit 2 ;;
esac
