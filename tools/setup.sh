# shellcheck shell=bash
# Functions of ./run, ./test and .ci/run: installing packages, configuring, building. Source it from the project's root.

say() { printf '==> %s\n' "$*"; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}

# packages_of GROUP...: prints the packages of these groups, one per line.
packages_of() {
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' packaging/packages.txt
    done
}

# missing_of GROUP...: prints the packages that are not installed.
missing_of() {
    local -a wanted
    mapfile -t wanted < <(packages_of "$@")
    ((${#wanted[@]})) || fail "no packages listed under: $*"
    # dpkg-query fails if it does not know a package, but still prints the others.
    comm -23 <(printf '%s\n' "${wanted[@]}" | LC_ALL=C sort -u) \
        <(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null |
            awk '$1 == "installed" { print $2 }' | LC_ALL=C sort -u)
}

# as_root COMMAND...: runs the command, with sudo if we are not root. Asks for a password only at a terminal.
as_root() {
    if ((EUID == 0)); then
        "$@" </dev/null
    elif ! command -v sudo >/dev/null; then
        fail "not root, and there is no sudo. As root, run: $*"
    elif [ -t 0 ]; then
        sudo "$@" </dev/null
    else
        sudo -n "$@" </dev/null
    fi
}

apt_get() {
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -y -o DPkg::Lock::Timeout=300 "$@"
}

# install_packages GROUP...: installs missing packages and prints them. Does nothing if none is missing.
install_packages() {
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        fail "this set-up is for Debian 12. Elsewhere, install the packages of packaging/packages.txt under their names there, and build with CMake."
    fi
    local missing
    missing=$(missing_of "$@")
    [ -n "$missing" ] || return 0
    local -a names
    mapfile -t names <<<"$missing"
    say "installing ${#names[@]} packages with apt-get: ${names[*]}"
    apt_get update || say "apt-get update failed; trying with the package lists at hand"
    if ! apt_get install --no-install-recommends "${names[@]}" >build/apt.log 2>&1; then
        tail -n 30 build/apt.log >&2
        fail "apt-get could not install the packages named above"
    fi
    missing=$(missing_of "$@")
    [ -z "$missing" ] || fail "still not installed: ${missing//$'\n'/ }"
}

# configure PRESET [ARGUMENT...]: prints output only on failure.
configure() {
    local preset=$1
    shift
    say "configuring: $preset"
    cmake --preset "$preset" "$@" >build/configure.log 2>&1 || {
        cat build/configure.log >&2
        fail "configuring failed"
    }
}

# build FOLDER [ARGUMENT...]
build() {
    local folder=$1
    shift
    say "building: $folder"
    cmake --build "$folder" --parallel "$(jobs_that_fit)" "$@"
}

# jobs_that_fit: prints the number of parallel jobs: one per processor, but not more than the memory allows. Compiling a
# file with many templates needs about 1 GB.
jobs_that_fit() {
    local processors gigabytes
    processors=$(nproc)
    gigabytes=$(awk '/^MemAvailable:/ { print int($2 / 1048576) }' /proc/meminfo 2>/dev/null || echo "$processors")
    ((gigabytes >= 1)) || gigabytes=1
    echo $((processors < gigabytes ? processors : gigabytes))
}
