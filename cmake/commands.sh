# shellcheck shell=bash
# Shared by ./play and ./test, which source it: the packages they need and how they build.

: "${root:?the folder of the checkout, set by whoever sources this}"

# Names of Debian packages.
buildPackages=(
    g++ cmake ninja-build pkg-config gettext
    libsdl2-dev libx11-dev libwayland-dev libepoxy-dev libegl-dev libgl-dev libglm-dev
    libcairo2-dev libpango1.0-dev libfontconfig-dev
    nlohmann-json3-dev libfmt-dev
    libevdev-dev libudev-dev libsystemd-dev
)
runPackages=(
    libgl1 libegl1 libgl1-mesa-dri libegl-mesa0 libglx-mesa0
    libdecor-0-plugin-1-cairo
    fonts-jetbrains-mono fonts-vollkorn fonts-inter fonts-liberation fonts-dejavu-core
)
testPackages=(
    clang-format libgtest-dev libgmock-dev glslang-tools
    xvfb xdotool openbox imagemagick
)

say() { printf 'gullwick: %s\n' "$*" >&2; }

# quietly LOG COMMAND...: shows nothing unless the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null && return
    tail -n 60 "$log" >&2
    say "this failed: $* (the whole log: $log)"
    return 1
}

asRoot() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# installMissing PACKAGE...: asks for privileges only if something is missing. On systems other than Debian it
# does nothing and lets the build report what is missing.
installMissing() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 0
    local -A have=()
    local package state missing=()
    while read -r package state; do
        [ "$state" = installed ] && have[$package]=1
    done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n')
    for package in "$@"; do
        [ "${have[$package]-}" ] || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    if [ "$(id -u)" != 0 ] && ! command -v sudo >/dev/null; then
        say "packages are missing and there is no sudo; as root: apt-get install ${missing[*]}"
        return 1
    fi
    say "installing ${missing[*]}"
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300)
    # A failed update (an unreachable source) may not matter; the install reports real problems.
    asRoot "${apt[@]}" update >"$root/build/apt.log" 2>&1 </dev/null || true
    quietly "$root/build/apt.log" asRoot "${apt[@]}" install --no-install-recommends "${missing[@]}"
}

# build WITH_TESTS TARGET...: configures if necessary, then builds. WITH_TESTS is ON, or empty to keep the
# setting of the build folder (off in a new one).
build() {
    local withTests=$1 cache=$root/build/CMakeCache.txt arguments=() target targets=()
    shift
    for target in "$@"; do targets+=(--target "$target"); done

    if [ -e "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
        arguments+=(--fresh)  # the folder was moved or copied here
    fi
    if [ "$withTests" ]; then
        arguments+=(-DGULL_TESTS=ON)
    elif [ ! -e "$cache" ]; then
        arguments+=(-DGULL_TESTS=OFF)
    fi
    if [ ! -e "$root/build/build.ninja" ] || [ ${#arguments[@]} -gt 0 ]; then
        if ! quietly "$root/build/configure.log" configure "${arguments[@]}"; then
            command -v apt-get >/dev/null ||
                say "this is no Debian; what is needed has these names there: ${buildPackages[*]} ${runPackages[*]}" \
                    "and for the tests ${testPackages[*]}"
            return 1
        fi
    fi
    quietly "$root/build/build.log" cmake --build "$root/build" "${targets[@]}"
}

configure() { (cd "$root" && cmake --preset release "$@"); }
