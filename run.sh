#!/usr/bin/env bash
# Builds Quavernet and starts it. See --help.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
# shellcheck source=tools/packages.sh
. tools/packages.sh

usage() {
    cat <<'TXT'
./run.sh [options]

Installs what is missing (Debian packages, by name), builds the program into build/release and starts it.
The program comes up in German; Ansicht > Sprache > Englisch changes that at once.

  --screenshot [FILE]  write a picture of the main window to FILE (default build/release/main.png), then end
                       the program
  --build-only         build and stop
  --help               this text

On a machine without a display the program starts on a virtual screen (Xvfb, 1280x800) under the window
manager openbox. Nobody can see that screen, so the script then does what --screenshot does, says where the
picture is, and ends.

Your library is "Quavernet Database/Quavernet.db" in your documents folder; it is made at the first start.
TXT
}

picture=""
build_only=0
while [ $# -gt 0 ]; do
    case $1 in
    --screenshot)
        picture=build/release/main.png
        if [ $# -gt 1 ] && [ "${2#-}" = "$2" ]; then
            picture=$2
            shift
        fi
        ;;
    --build-only) build_only=1 ;;
    -h | --help)
        usage
        exit 0
        ;;
    *)
        usage >&2
        exit 2
        ;;
    esac
    shift
done

virtual=0
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    virtual=1
    [ -n "$picture" ] || picture=build/release/main.png
fi

packages=("${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}")
if [ "$build_only" -eq 0 ] && [ -n "$picture" ]; then
    packages+=("${PACKAGES_SCREEN[@]}")
fi
install_missing "${packages[@]}"

cmake --preset release
cmake --build --preset release --parallel "$(build_jobs)"
program=build/release/bin/quavernet
[ "$build_only" -eq 0 ] || exit 0

if [ -z "$picture" ]; then
    exec "$program"
fi

started=()
stop_all() {
    local process
    for process in ${started[@]+"${started[@]}"}; do
        kill "$process" 2>/dev/null || true
    done
    wait 2>/dev/null || true
}
trap stop_all EXIT

if [ "$virtual" -eq 1 ]; then
    echo "There is no display: starting on a virtual screen under openbox."
    number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp -noreset 3>"$number" 2>/dev/null &
    started+=($!)
    for _ in $(seq 100); do
        [ -s "$number" ] && break
        sleep 0.1
    done
    DISPLAY=:$(cat "$number")
    rm -f "$number"
    [ "$DISPLAY" != ":" ] || { echo "The virtual screen did not start." >&2; exit 1; }
    export DISPLAY
    openbox >/dev/null 2>&1 &
    started=($! "${started[@]}")
fi

"$program" &
program_process=$!
started=("$program_process" ${started[@]+"${started[@]}"})
if ! window=$(timeout 60 xdotool search --sync --onlyvisible --limit 1 --pid "$program_process" --name Quavernet); then
    echo "The main window did not come up within a minute." >&2
    exit 1
fi
# The start picture stands over the window for its first four seconds.
sleep 5
mkdir -p "$(dirname "$picture")"
if [ "$virtual" -eq 1 ]; then
    import -window root "$picture"
else
    import -window "$window" "$picture"
fi
echo "Screenshot: $picture"
