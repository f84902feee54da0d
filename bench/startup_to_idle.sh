#!/usr/bin/env bash
# Start-up to an idle window with a large repository of each kind: the real
# binary in an X server of its own, timed from launch until it reports that
# its window is idle, beside the repository's status run directly (the one
# command the window cannot do without). Prints its figures; asserts nothing.
#
# Usage: bench/startup_to_idle.sh BUILD_FOLDER [--small] [--runs N] [--keep] [--also OTHER_BUILD_FOLDER]
# (--also times a second build on the same repositories, for a before and after.)
set -euo pipefail

build=$(cd "${1:?usage: startup_to_idle.sh BUILD_FOLDER [--small] [--runs N] [--keep]}" && pwd)
shift
here=$(cd "$(dirname "$0")" && pwd)
small=false
runs=3
keep=false
binaries=()
while [[ $# -gt 0 ]]; do
    case $1 in
    --small) small=true ;;
    --runs) runs=$2; shift ;;
    --keep) keep=true ;;
    --also) binaries+=("$(cd "$2" && pwd)/tillery"); shift ;;
    *) echo "unknown option $1" >&2; exit 2 ;;
    esac
    shift
done
binaries=("$build/tillery" "${binaries[@]}")
for binary in "${binaries[@]}"; do
    [[ -x $binary ]] || { echo "no binary at $binary (build first)" >&2; exit 2; }
done
command -v Xvfb >/dev/null || { echo "Xvfb is not installed" >&2; exit 2; }

work=$(mktemp -d /tmp/tillery-startup-XXXXXX)
display=:$((90 + RANDOM % 100))
Xvfb "$display" -screen 0 1600x1000x24 -nolisten tcp >/dev/null 2>&1 &
xvfb=$!
cleanup() {
    kill "$xvfb" 2>/dev/null || true
    if $keep; then echo "kept $work"; else rm -rf "$work"; fi
}
trap cleanup EXIT

if $small; then
    hg_size=(--files 5000 --changesets 500 --bookmarks 12 --changes 320)
    git_size=(--files 5000 --commits 500 --changes 320)
else
    hg_size=(--files 50000 --changesets 5000 --bookmarks 36 --changes 3200)
    git_size=(--files 50000 --commits 5000 --changes 3200)
fi
echo "generating the repositories in $work"
/usr/bin/python3 "$here/make_mercurial_fixture.py" "$work/mercurial" "${hg_size[@]}" >/dev/null
/usr/bin/python3 "$here/make_git_fixture.py" "$work/git" "${git_size[@]}" >/dev/null

now() { date +%s%N; }
median() { sort -n | awk '{ a[NR] = $1 } END { print (NR % 2) ? a[(NR + 1) / 2] : (a[NR / 2] + a[NR / 2 + 1]) / 2 }'; }

# Milliseconds from launch until the window says it is idle, on fresh settings.
startup() {
    local binary=$1 repository=$2 home="$work/home-$RANDOM" start line
    mkdir -p "$home"
    start=$(now)
    coproc app { HOME="$home" XDG_CONFIG_HOME="$home/.config" XDG_DATA_HOME="$home/.local/share" \
        DISPLAY=$display exec "$binary" --repository "$repository" --report-window 2>/dev/null; }
    while IFS= read -r line <&"${app[0]}"; do
        [[ $line == *"window is idle"* ]] && break
    done
    echo $((($(now) - start) / 1000000))
    kill "$app_PID" 2>/dev/null || true
    wait "$app_PID" 2>/dev/null || true
}

# Milliseconds of the status command run directly, as the application runs it.
status() {
    local start
    start=$(now)
    case $1 in
    mercurial) (cd "$work/mercurial" && HGPLAIN=1 hg status -0 >/dev/null) ;;
    git) git -C "$work/git" status --porcelain=v1 -z --untracked-files=all >/dev/null ;;
    esac
    echo $((($(now) - start) / 1000000))
}

for kind in mercurial git; do
    status "$kind" >/dev/null # warms the file-system cache
    statuses=$(for _ in $(seq "$runs"); do status "$kind"; done | median)
    for binary in "${binaries[@]}"; do
        startup "$binary" "$work/$kind" >/dev/null
        startups=$(for _ in $(seq "$runs"); do startup "$binary" "$work/$kind"; done | median)
        printf '%-10s start-up to idle window %6s ms, status run directly %6s ms, difference %6s ms (target: at most 400)  %s\n' \
            "$kind" "$startups" "$statuses" "$((${startups%.*} - ${statuses%.*}))" "$binary"
    done
done
