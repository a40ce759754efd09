# Shared by ./run and ./test: installs missing packages and builds.

# The packages in tools/packages.txt, without comments.
listed_packages() {
    sed 's/#.*//' "$1/tools/packages.txt" | tr -s ' \t\n' ' '
}

missing_packages() {
    local package
    for package in $(listed_packages "$1"); do
        dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || printf '%s ' "$package"
    done
}

# Installs missing packages. Without the rights to do so, says which ones and exits.
setup_packages() {
    local missing as_root=()
    missing=$(missing_packages "$1")
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2>/dev/null && ! { [ -t 0 ] && sudo -v; }; then
            echo "These packages are missing and can't be installed from here: $missing" >&2
            echo "Install them with: apt-get install $missing" >&2
            exit 1
        fi
        as_root=(sudo)
    fi
    echo "Installing: $missing"
    "${as_root[@]}" apt-get update -qq
    # shellcheck disable=SC2086
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends $missing >/dev/null
}

# build ROOT PRESET
build() {
    cd "$1"
    [ -f "build/$2/build.ninja" ] || cmake --preset "$2" >/dev/null
    cmake --build --preset "$2"
}
