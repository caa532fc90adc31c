# shellcheck shell=bash
# Sourced by the scripts at the root: what they have in common. They work from any folder, so nothing here changes to
# another one.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

# One line that says what is wrong, and the end.
fail()
{
    printf '%s: %s\n' "$(basename "$0")" "$1" >&2
    exit "${2:-1}"
}

# Runs a command as root: directly, or by sudo.
as_root()
{
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo > /dev/null; then
        sudo "$@"
    else
        fail "cannot install packages: be root, or install sudo"
    fi
}

apt_get()
{
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q "$@"
}

# Installs those of the listed packages that are missing. Without any, it costs one look at the package database.
install_packages()
{
    local wanted installed missing
    wanted=$(sed 's/#.*//; /^ *$/d' "$root/cmake/packages-debian.txt" | sort)
    # It fails when there is a package that it has never heard of, which is just what is asked.
    # shellcheck disable=SC2086
    installed=$({ dpkg-query -W -f '${Package} ${db:Status-Status}\n' $wanted 2> /dev/null || true; } |
        sed -n 's/ installed$//p' | sort -u)
    missing=$(comm -23 <(echo "$wanted") <(echo "$installed") | tr '\n' ' ')
    [ -n "$missing" ] || return 0
    echo "Installing what is missing: $missing"
    apt_get update || fail "cannot read Debian's package lists; is there a network?"
    # shellcheck disable=SC2086
    apt_get install -y --no-install-recommends $missing || fail "cannot install: $missing"
}

# is_of_another_checkout FOLDER: a build folder that was copied along with its checkout builds the one that it was
# copied from.
is_of_another_checkout()
{
    local home
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$1/CMakeCache.txt" 2> /dev/null)
    [ -n "$home" ] && ! [ "$home" -ef "$root" ]
}

# build PRESET [TARGET...]: configures where that was not done yet, and builds the targets, or everything.
build()
{
    local preset=$1 folder=$root/build/$1
    shift
    if is_of_another_checkout "$folder"; then
        echo "$folder came with a copy of another checkout; it is configured anew."
        (cd "$root" && cmake --preset "$preset" --fresh --log-level=WARNING > /dev/null) ||
            fail "cannot configure; remove $folder and try again"
    elif [ ! -f "$folder/build.ninja" ]; then
        echo "Configuring and building ($preset); the first time takes some minutes."
        (cd "$root" && cmake --preset "$preset" --log-level=WARNING > /dev/null) ||
            fail "cannot configure; remove $folder and try again"
    fi
    # On a terminal one line shows how far it is; elsewhere only errors are of interest.
    if [ -t 1 ]; then
        ninja -C "$folder" "$@"
    else
        ninja --quiet -C "$folder" "$@" | sed '/^ninja: no work to do/d; /^-- /d'
    fi || fail "cannot build ($preset); the first error stands above"
}

# with_scratch FOLDER COMMAND...: runs a command whose temporary files go into a folder of their own within that one. It
# is removed in the end: processes that end early, as many do on purpose, remove nothing themselves.
with_scratch()
{
    local scratch result=0
    scratch=$(mktemp -d -p "$1" zel-XXXXXX)
    chmod 755 "$scratch" # for tests that give up the rights of root
    shift
    # shellcheck disable=SC2064
    trap "rm -rf '$scratch'" EXIT
    TMPDIR=$scratch TEST_TMPDIR=$scratch "$@" || result=$?
    rm -rf "$scratch"
    return "$result"
}
