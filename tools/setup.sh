# Shared by ./run, ./test, .ci/run and tools/fuzz: installs missing packages and configures builds.

give_up() {
    printf '%s\n' "$@" >&2
    exit 1
}

# Prints one line per entry of the given sections: names, section and purpose, separated by tabs.
package_lines() {
    awk -v wanted=" ${*:2} " '
        { comment = $0; sub(/^[^#]*#? */, "", comment); sub(/ *#.*/, "") }
        /^\[/ { section = substr($0, 2, length($0) - 2); purpose = comment; next }
        NF && index(wanted, " " section " ") { print $0 "\t" section "\t" purpose }' "$1/tools/packages.txt"
}

# The lines of the given sections that have no package installed.
missing_lines() {
    local installed names section purpose
    installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' | sed -n 's/^installed //p')
    package_lines "$@" | while IFS=$'\t' read -r names section purpose; do
        grep -qxF "${names// | /$'\n'}" <<<"$installed" || printf '%s\t%s\t%s\n' "$names" "$section" "$purpose"
    done
}

# The first of the given packages that apt knows.
first_known_to_apt() {
    local package
    for package; do
        if [[ $(LC_ALL=C apt-cache policy "$package") == "$package:"*"Candidate: "[!\(]* ]]; then
            echo "$package"
            return
        fi
    done
    return 1
}

apt_get() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq -o DPkg::Lock::Timeout=300 "$@" >>"$apt_log" 2>&1
}

# setup_packages ROOT SECTION...: installs the missing packages of these sections, or says why it can't and exits.
setup_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        give_up "This needs Debian 12 or 13; there is no apt-get here. On other systems, install the equivalents of" \
            "tools/packages.txt, then run: cmake --preset release && cmake --build --preset release"
    fi

    local missing names section purpose package install=() unknown=() lists_are_fresh=1
    local as_root=() apt_log=$1/build/apt.log
    missing=$(missing_lines "$@")
    [ -n "$missing" ] || return 0

    if [ "$(id -u)" -ne 0 ]; then
        as_root=(sudo)
        if ! command -v sudo >/dev/null || ! { sudo -n true 2>/dev/null || { [ -t 0 ] && sudo -v; }; }; then
            give_up "Packages are missing, and installing them needs root or sudo. As root, run:" \
                "  apt-get install $(cut -f 1 <<<"$missing" | sed 's/ |.*//' | sort -u | tr '\n' ' ')"
        fi
    fi

    mkdir -p "$1/build"
    : >"$apt_log"
    apt_get update -o APT::Update::Error-Mode=any || lists_are_fresh=
    while IFS=$'\t' read -r names section purpose; do
        # shellcheck disable=SC2086
        if package=$(first_known_to_apt ${names//|/ }); then
            install+=("$package")
        else
            unknown+=("  $names, needed for $purpose (section [$section] in tools/packages.txt)")
        fi
    done <<<"$missing"

    if [ ${#unknown[@]} -gt 0 ] && [ -z "$lists_are_fresh" ]; then
        give_up "apt-get can't download the package lists (no network?), and without them it doesn't know:" \
            "${unknown[@]}" "apt-get's output is in $apt_log."
    elif [ ${#unknown[@]} -gt 0 ]; then
        give_up "apt doesn't know these packages, which Debian 12 and 13 have:" "${unknown[@]}"
    fi

    echo "Installing: ${install[*]}"
    apt_get install -y --no-install-recommends "${install[@]}" ||
        give_up "apt-get can't install these packages (no network, or no disk space?)." \
            "$(grep -m 1 '^E:' "$apt_log")" "apt-get's output is in $apt_log."
}

# configure PRESET [ON|OFF]: creates the build folder if there is none; ON also adds the tests to an existing one.
configure() {
    if [ ! -f "build/$1/build.ninja" ] ||
        { [ "${2:-}" = ON ] && ! grep -q '^VARNEL_TESTS:BOOL=ON' "build/$1/CMakeCache.txt"; }; then
        cmake --preset "$1" ${2:+-DVARNEL_TESTS="$2"} >/dev/null
    fi
}
