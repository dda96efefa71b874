#!/usr/bin/env bash
# Installs what a build needs and is not there yet: setup.sh host|windows
# With everything in place it does nothing and takes no time.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

host_packages=(g++ cmake ninja-build googletest libbenchmark-dev pkg-config python3 doxygen)
windows_packages=(wine64 g++-mingw-w64-i686-posix xvfb xauth)

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
    apt-get update -q >/dev/null || true
    DEBIAN_FRONTEND=noninteractive $command >/dev/null
}

# The 32-bit system modules of Wine come from Debian's i386 package, unpacked and not installed, so
# that the machine's own package list stays as it is.
fetch_wine_modules() {
    [ -d "$WINEDLLPATH/i386-windows" ] && return 0
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

# Wine links folders such as Music to the user's home directory. Programs under test shall not get
# there: the links become plain folders.
unlink_home() {
    local link
    find "$WINEPREFIX/drive_c/users" -type l -print0 | while IFS= read -r -d '' link; do
        rm "$link" && mkdir "$link"
    done
}

# A fresh prefix: drive C: as Wine makes it, and D: as a second drive for the tests.
make_prefix() {
    [ -e "$WINEPREFIX/ready" ] && return 0
    echo "setup: making the Wine prefix"
    rm -rf "$WINEPREFIX" && mkdir -p "$WINEPREFIX"
    "$JW32_WINE" wineboot -i >/dev/null 2>&1 || true
    [ -e "$WINEPREFIX/drive_c/windows/syswow64/kernel32.dll" ] ||
        { echo "setup: Wine made no 32-bit system directory in $WINEPREFIX" >&2; exit 1; }
    unlink_home
    mkdir -p "$WINEPREFIX/drive_d" && ln -sfn ../drive_d "$WINEPREFIX/dosdevices/d:"
    touch "$WINEPREFIX/ready"
}

case ${1:?host or windows} in
    host) install_packages "${host_packages[@]}" ;;
    windows)
        install_packages "${host_packages[@]}" "${windows_packages[@]}"
        source "$root/scripts/wine-env.sh"
        fetch_wine_modules
        make_prefix ;;
esac
