# shellcheck shell=bash
# Shared by ./play, ./test and ./package, which source it: the packages they need and how they build.

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
    clang-format clang-tidy libgtest-dev libgmock-dev glslang-tools
    xvfb xdotool openbox imagemagick
)

# dpkg-dev computes dependencies, the others check.
# shellcheck disable=SC2034
packagingPackages=(dpkg-dev file lintian appstream desktop-file-utils)

say() { printf 'gullwick: %s\n' "$*" >&2; }

# quietly LOG COMMAND...: shows nothing unless the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    "$@" >"$log" 2>&1 </dev/null && return
    failed "$log" "$@"
}

failed() {
    local log=$1
    shift
    tail -n 60 "$log" >&2
    say "this failed: $* (the whole log: $log)"
    return 1
}

# followed LOG WHAT COMMAND...: tells how far a command is by what ninja and apt print; its output goes to LOG alone.
followed() {
    local log=$1 what=$2
    shift 2
    mkdir -p "$(dirname "$log")"
    "$@" 2>&1 </dev/null | tee "$log" | showProgress "$what"
}

# On a terminal one line that is replaced; elsewhere a line for every tenth of the work.
showProgress() {
    local what=$1 line percent verb shown=
    while IFS= read -r line; do
        verb=$what
        if [[ $line =~ ^\[([0-9]+)/([0-9]+)\] && ${BASH_REMATCH[2]} -gt 0 ]]; then
            percent=$((100 * BASH_REMATCH[1] / BASH_REMATCH[2]))
        elif [[ $line =~ ^(dl|pm)status:[^:]*:([0-9]+) ]]; then
            percent=${BASH_REMATCH[2]}
            [ "${BASH_REMATCH[1]}" = pm ] || verb=downloading
        else
            continue
        fi
        if [ -t 2 ] && [ "${TERM-dumb}" != dumb ]; then
            printf '\r\033[Kgullwick: %s %d %%' "$verb" "$percent" >&2
        else
            percent=$((percent / 10 * 10))
            [ "$verb $percent" = "$shown" ] || say "$verb $percent %"
        fi
        shown="$verb $percent"
    done
    if [ -n "$shown" ] && [ -t 2 ] && [ "${TERM-dumb}" != dumb ]; then printf '\r\033[K' >&2; fi
}

# writableFolder FOLDER: makes the folder where the build goes.
writableFolder() {
    mkdir -p "$1" 2>/dev/null && { : >>"$1/.lock"; } 2>/dev/null && return
    say "$1 cannot be written to; copy the checkout to a folder of yours: cp -r '$root' ~/gullwick"
    return 1
}

asRoot() {
    if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# missingPackages PACKAGE...: those that are not installed, a line each.
missingPackages() {
    local -A have=()
    local package state
    while read -r package state; do
        [ "$state" = installed ] && have[$package]=1
    done < <(dpkg-query -W -f '${Package} ${db:Status-Status}\n')
    for package in "$@"; do
        [ "${have[$package]-}" ] || printf '%s\n' "$package"
    done
}

# installMissing PACKAGE...: asks for privileges only if something is missing. On systems other than Debian it
# does nothing and lets the build report what is missing.
installMissing() {
    command -v dpkg-query >/dev/null && command -v apt-get >/dev/null || return 0
    local missing
    readarray -t missing < <(missingPackages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0

    local install="apt-get install --no-install-recommends ${missing[*]}"
    if [ "$(id -u)" != 0 ] && ! command -v sudo >/dev/null; then
        say "packages are missing and there is no sudo; as root: $install"
        return 1
    fi
    if ! asRoot true; then
        say "sudo does not let you install the packages that are missing; whoever may: sudo $install"
        return 1
    fi
    say "installing ${missing[*]}"
    local log=$root/build/apt.log
    local apt=(env DEBIAN_FRONTEND=noninteractive apt-get -y -o DPkg::Lock::Timeout=300)
    mkdir -p "$root/build"
    # A failed update (an unreachable source) may not matter; the install reports real problems.
    asRoot "${apt[@]}" update >"$log.update" 2>&1 </dev/null || true
    followed "$log" installing asRoot "${apt[@]}" -o APT::Status-Fd=1 install --no-install-recommends "${missing[@]}" &&
        return
    if grep -qE 'Could not resolve|Temporary failure resolving|Could not connect|Unable to connect|unreachable' \
        "$log" "$log.update"; then
        say "the packages could not be downloaded, because the network does not reach Debian's servers;" \
            "once it does: ./${0##*/}, or $([ "$(id -u)" = 0 ] || echo 'sudo ')$install"
        return 1
    fi
    failed "$log" "$install"
}

# build WITH_TESTS TARGET...: configures if necessary, then builds. WITH_TESTS is ON, or empty to keep the
# setting of the build folder (off in a new one).
build() {
    local withTests=$1 cache=$root/build/CMakeCache.txt log=$root/build/build.log arguments=() target targets=()
    shift
    for target in "$@"; do targets+=(--target "$target"); done

    if [ -e "$cache" ] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$cache"; then
        say "the folder was moved or copied here, so everything is built once more"
        arguments+=(--fresh)
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
    local command=(cmake --build "$root/build" "${targets[@]}")
    NINJA_STATUS='[%f/%t] ' followed "$log" building "${command[@]}" || failed "$log" "${command[@]}"
}

configure() { (cd "$root" && cmake --preset release "$@"); }
