# Which Debian packages the project needs, and how missing ones are installed. Sourced by run.sh and test.sh.

# What it takes to build the program and to run it on a desktop.
PACKAGES_BUILD=(g++ cmake ninja-build ccache pkg-config libsqlite3-dev libtag1-dev libogg-dev libmpv-dev
    qt6-base-dev qt6-svg-dev libgl-dev librsvg2-bin)
PACKAGES_RUN=(qt6-qpa-plugins qt6-translations-l10n qt6-image-formats-plugins libqt6svg6 libqt6dbus6 libqt6printsupport6
    libmpv2 fonts-dejavu-core hicolor-icon-theme xdg-utils python3 lame libnotify-bin)

# A screen of its own for machines that have none, and the tools that look at it.
PACKAGES_SCREEN=(xvfb openbox xdotool imagemagick x11-utils)

# For the tests: the same under Wayland, and the toolkit's way to the desktop's file dialogs.
PACKAGES_WAYLAND=(sway grim qt6-wayland qt6-xdgdesktopportal-platformtheme python3-gi)

# Tests: frameworks, real encoders and decoders, checkers, the locales that some tests run under, and what looks at the
# Debian package.
PACKAGES_TEST=(libgtest-dev libgmock-dev vorbis-tools sox libsox-fmt-base libsox-fmt-mp3 mpg123 python3-mutagen eyed3 id3v2 ffmpeg
    poppler-utils dbus python3-pyatspi at-spi2-core libglib2.0-bin playerctl pulseaudio sqlite3 clang-format cppcheck desktop-file-utils appstream locales
    dpkg-dev lintian debootstrap man-db mandoc shared-mime-info fonts-noto-core libfuse3-dev fuse3)

# Benchmarks: music, and a file system that is slow.
PACKAGES_BENCH=(lame vorbis-tools sox libsox-fmt-base python3 libfuse3-dev fuse3)

# The command prefix that makes us root; fails with a sentence if there is no way.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        echo "This step needs root, and there is no sudo: $*" >&2
        return 1
    fi
}

# Installs those of the named packages that are missing. Nothing is fetched when all are there.
install_missing() {
    local missing=() package
    for package in "$@"; do
        if ! dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed; then
            missing+=("$package")
        fi
    done
    [ "${#missing[@]}" -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null 2>&1; then
        echo "Please install by hand what these Debian packages hold: ${missing[*]}" >&2
        return 1
    fi
    echo "Installing ${missing[*]}"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get update -q || return 1
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# Makes the named UTF-8 locales available. The system's default locale stays as it is.
make_locales() {
    local locale
    for locale in "$@"; do
        if ! locale -a 2>/dev/null | grep -qix "${locale}\.utf-\?8"; then
            as_root localedef -i "$locale" -f UTF-8 "$locale.UTF-8" || return 1
        fi
    done
}

# Every compiler run costs about 1 GB in the worst case; no more runs at once than there is memory for.
build_jobs() {
    local cores memory
    cores=$(nproc)
    memory=$(awk '/MemAvailable/ { print int($2 / 1048576) }' /proc/meminfo)
    [ "$memory" -lt 1 ] && memory=1
    [ "$cores" -gt "$memory" ] && cores=$memory
    echo "$cores"
}
