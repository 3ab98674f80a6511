#!/usr/bin/env bash
# Installs what building and testing on Debian 12 or 13 needs, and fetches SQLite for the demo's data layer.
# Does nothing, quickly, where everything is there already.
#
# usage: scripts/setup.sh [--quiet]

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build
deps=$build/deps
log=$build/setup.log

wine_packages=(wine wine32:i386)
wine64_package=wine64
packages=(
    g++-mingw-w64-i686-posix g++-mingw-w64-x86-64-posix mingw-w64-tools libwine-dev
    cmake ninja-build googletest
    nsis xvfb imagemagick xdotool x11-utils fonts-liberation fonts-wine
    clang-19 clang-tidy-19 clang-format-19 python3 shellcheck
    ca-certificates
)

# The package ships SQLite's amalgamation unmodified. The checksum is the one of the registry's tarball.
sqlite_package=better-sqlite3
sqlite_package_version=12.11.1
sqlite_sha256=ebf0ed75a7a59dbcb3b24bbd014ef49d9f15bc328e4adcbf516f2a8fadfa2835
sqlite_files=(sqlite3.c sqlite3.h sqlite3ext.h)

quiet=no
scratch=

say() {
    [[ $quiet = yes ]] || printf '%s\n' "$*"
}

note() {
    printf 'note: %s\n' "$*" >&2
}

die() {
    printf 'setup: %s\n' "$1" >&2
    shift
    if (($#)); then printf '       %s\n' "$@" >&2; fi
    exit 1
}

die_with_log() {
    if [[ -s $log ]]; then
        printf -- '--- end of %s\n' "$log" >&2
        tail -n 20 "$log" >&2
        printf -- '---\n' >&2
    fi
    die "$@"
}

remove_scratch() {
    [[ -z $scratch ]] || rm -rf "$scratch"
}

# The log tells of the last run that had something to do.
log_begun=no
begin_log() {
    [[ $log_begun = no ]] || return 0
    : >"$log"
    log_begun=yes
}

# --- packages

missing=()

# Sets `missing` to those of the given packages that are not installed.
find_missing() {
    local name arch status wanted
    local -A installed=()
    while read -r name arch status; do
        [[ $status = installed ]] || continue
        installed[$name:$arch]=yes
        [[ $arch = i386 ]] || installed[$name]=yes
    done < <(dpkg-query -W -f '${Package} ${Architecture} ${db:Status-Status}\n' "${@%%:*}" 2>/dev/null || true)
    missing=()
    for wanted; do
        [[ -n ${installed[$wanted]:-} ]] || missing+=("$wanted")
    done
}

apt() {
    DEBIAN_FRONTEND=noninteractive apt-get -q -y \
        -o Acquire::Retries=3 -o DPkg::Lock::Timeout=300 -o Dpkg::Options::=--force-confold \
        "$@" >>"$log" 2>&1 </dev/null
}

# Where the machine gets its release's main section from: "<address> <keyring or nothing>".
configured_mirror() {
    local release=$1 uri entry keyring=
    # shellcheck disable=SC2016 # apt expands these
    read -r uri entry < <(apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI) $(SOURCESENTRY)' \
        'Created-By: Packages' 2>/dev/null |
        awk -v release="$release" '$1 == release && $2 == "main" { print $3, $4; exit }') || true
    if [[ -n ${entry:-} && -r ${entry%:*} ]]; then
        keyring=$(grep -ioE 'signed-by[:=] *("|)/[^] ",]+' "${entry%:*}" | grep -oE '/.*' | head -n 1) || true
    fi
    if [[ -z $keyring && -r /usr/share/keyrings/debian-archive-keyring.gpg ]]; then
        keyring=/usr/share/keyrings/debian-archive-keyring.gpg
    fi
    printf '%s %s\n' "${uri:-http://deb.debian.org/debian}" "$keyring"
}

# Sets `main_only` to the options that confine apt to the release's main section, for both architectures.
main_only=()
prepare_main_only() {
    ((${#main_only[@]} == 0)) || return 0
    local release uri keyring signed=
    # shellcheck source=/dev/null
    release=$(. /etc/os-release && printf '%s' "$VERSION_CODENAME")
    read -r uri keyring < <(configured_mirror "$release")
    [[ -z $keyring ]] || signed=" signed-by=$keyring"
    mkdir -p "$scratch/sources" "$scratch/lists/partial"
    printf 'deb [arch=amd64,i386%s] %s %s main\n' "$signed" "$uri" "$release" >"$scratch/sources/main.list"
    : >"$scratch/no-preferences"
    printf 'Package: *\nPin: release n=%s\nPin-Priority: 1001\n' "$release" >"$scratch/pinned"
    # apt's download user must be able to enter the folder.
    chmod -R a+rX "$scratch"
    main_only=(
        -o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$scratch/sources"
        -o "Dir::State::lists=$scratch/lists" -o Dir::Etc::preferencesparts=/dev/null
    )
    apt "${main_only[@]}" update || true
}

list_downgrades() {
    awk '
        /^The following packages will be DOWNGRADED:/ { on = 1; list = ""; next }
        on && /^ / { list = list $0; next }
        { on = 0 }
        END { print list }' "$log" | xargs
}

lists_updated=no
update_lists() {
    [[ $lists_updated = no ]] || return 0
    # One index that is out of step on the mirror fails the update as a whole; the others serve all the same.
    apt update || say "package lists: updated with errors, see $log"
    lists_updated=yes
}

# Installs from the configured lists; else from main alone, because an index of one architecture that lags
# behind the other one's makes libraries of both unresolvable; else from main with downgrades to its versions.
install() {
    local flags=(install --no-install-recommends)
    begin_log
    printf '=== %s\n' "$*" >>"$log"
    update_lists
    if apt "${flags[@]}" "$@"; then return 0; fi
    prepare_main_only
    flags+=(--allow-downgrades)
    if apt "${main_only[@]}" -o "Dir::Etc::preferences=$scratch/no-preferences" "${flags[@]}" "$@"; then return 0; fi
    if apt "${main_only[@]}" -o "Dir::Etc::preferences=$scratch/pinned" "${flags[@]}" "$@"; then
        note "to get $* installed, these packages went back to the release's first versions:"
        note "  $(list_downgrades)"
        note "'apt-get upgrade' brings them forward again once the mirror's indexes agree."
        return 0
    fi
    return 1
}

require_root() {
    ((EUID == 0)) || die "these packages are missing: $*" "Installing them needs root: run 'sudo scripts/setup.sh'."
}

require_installable() {
    command -v apt-get >/dev/null || die "apt-get is missing; this script serves Debian 12 and 13." \
        "Elsewhere, install the equivalents of: $*"
    [[ $(dpkg --print-architecture) = amd64 ]] || die "an amd64 machine is needed, this one is $(dpkg --print-architecture)."
}

install_or_die() {
    local what=$1
    shift
    install "$@" || die_with_log "installing $what failed ($*)" \
        "Check the network and the package sources, run 'apt-get update', then start this script again."
    say "installed: $*"
}

# Wine comes first: packages that pull in the 64-bit half alone, in a later version, would block the 32-bit one.
setup_wine() {
    find_missing "${wine_packages[@]}" "$wine64_package"
    ((${#missing[@]})) || return 0
    if [[ ${missing[*]} = "$wine64_package" ]] && { ((EUID != 0)) || [[ -e $build/no-wine64 ]]; }; then
        return 0
    fi
    require_installable "${missing[@]}"
    require_root "${missing[@]}"
    dpkg --add-architecture i386
    say "installing: ${missing[*]}"
    # Asked for by name even where they are there already, so that a fallback moves the three together.
    if install "${wine_packages[@]}" "$wine64_package"; then
        say "installed: ${wine_packages[*]} $wine64_package"
        return 0
    fi
    find_missing "${wine_packages[@]}"
    ((${#missing[@]} == 0)) || install_or_die "32-bit Wine" "${wine_packages[@]}"
    note "64-bit Wine could not be installed: 64-bit tests will be compiled only."
    note "  (remove $build/no-wine64 to have it tried again)"
    : >"$build/no-wine64"
}

setup_packages() {
    local wanted=("${packages[@]}")
    # Node.js and git often come from elsewhere than Debian: what counts is the command.
    command -v npm >/dev/null || wanted+=(npm)
    command -v git >/dev/null || wanted+=(git)
    find_missing "${wanted[@]}"
    ((${#missing[@]})) || return 0
    require_installable "${missing[@]}"
    require_root "${missing[@]}"
    say "installing: ${missing[*]}"
    install_or_die "packages" "${missing[@]}"
}

# --- SQLite

setup_sqlite() {
    local target=$deps/sqlite3 stamp="$sqlite_package $sqlite_package_version $sqlite_sha256" file
    local tarball=$deps/$sqlite_package-$sqlite_package_version.tgz
    if [[ $(cat "$target/.stamp" 2>/dev/null) = "$stamp" ]]; then return 0; fi

    begin_log
    mkdir -p "$deps"
    if ! sqlite_is_intact "$tarball"; then
        # npm brings its own list of authorities; let it trust what the machine trusts besides.
        NODE_EXTRA_CA_CERTS=${NODE_EXTRA_CA_CERTS:-/etc/ssl/certs/ca-certificates.crt} \
            npm pack --loglevel=error --fetch-retry-maxtimeout=10000 --pack-destination "$deps" \
            "$sqlite_package@$sqlite_package_version" >>"$log" 2>&1 ||
            die_with_log "fetching SQLite ('npm pack $sqlite_package@$sqlite_package_version') failed" \
                "Check the network and npm's registry setting, then start this script again."
        sqlite_is_intact "$tarball" ||
            die "the SQLite package $tarball does not have the expected checksum" \
                "expected SHA-256 $sqlite_sha256; remove the file and try again."
    fi
    rm -rf "$target"
    mkdir -p "$target"
    tar -xzf "$tarball" -C "$target" --no-same-owner --strip-components=3 \
        "${sqlite_files[@]/#/package/deps/sqlite3/}" >>"$log" 2>&1 ||
        die_with_log "extracting SQLite from $tarball failed" "Remove the file and start this script again."
    for file in "${sqlite_files[@]}"; do
        [[ -s $target/$file ]] || die "$tarball has no $file"
    done
    printf '%s\n' "$stamp" >"$target/.stamp"
    say "fetched: SQLite $(sed -n 's/^#define SQLITE_VERSION *"\(.*\)"/\1/p' "$target/sqlite3.h") into $target"
}

sqlite_is_intact() {
    [[ -f $1 ]] && printf '%s  %s\n' "$sqlite_sha256" "$1" | sha256sum --check --status
}

# ---

while (($#)); do
    case $1 in
        --quiet) quiet=yes ;;
        *) die "unknown option $1" "usage: scripts/setup.sh [--quiet]" ;;
    esac
    shift
done

mkdir -p "$build"
trap remove_scratch EXIT
scratch=$(mktemp -d)

setup_wine
setup_packages
setup_sqlite
say "setup: everything is there"
