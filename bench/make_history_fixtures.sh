#!/usr/bin/env bash
# Builds the branchy repositories the history benchmarks read: Git with
# 200,000 commits and Mercurial with 50,000 changesets (--small: a tenth),
# both with thousands of merges, several lines of descent alive at any point,
# a rare word and a rare author every few thousand commits and one long file
# that a few hundred commits edit. Prints "key: value" lines on stdout for a
# benchmark to read; the generators' own summaries go to stderr. --describe
# builds nothing and prints the same lines for the repositories already there.
#
# Usage: bench/make_history_fixtures.sh FOLDER [--small] [--only git|mercurial] [--commit-graph] [--describe]
# (FOLDER/git and FOLDER/mercurial must not exist or be empty, unless --describe.)
set -euo pipefail

usage="usage: make_history_fixtures.sh FOLDER [--small] [--only git|mercurial] [--commit-graph] [--describe]"
folder=${1:?$usage}
shift
here=$(cd "$(dirname "$0")" && pwd)
small=false
only=
graph=()
describe=false
while [[ $# -gt 0 ]]; do
    case $1 in
    --small) small=true ;;
    --only) only=$2; shift ;;
    --commit-graph) graph=(--commit-graph) ;;
    --describe) describe=true ;;
    *) echo "$usage" >&2; exit 2 ;;
    esac
    shift
done
case $only in
'' | git | mercurial) ;;
*) echo "$usage" >&2; exit 2 ;;
esac
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)

if $small; then
    commits=20000 changesets=5000
else
    commits=200000 changesets=50000
fi
shape=(--files 5000 --merge-every 50 --parallel-branches 8 --changes 0)

constant() {
    /usr/bin/python3 -B -c "import sys; sys.path.insert(0, sys.argv[1]); import fixture_content as f; print($1)" "$here"
}
rare_word=$(constant f.RARE_WORD)
rare_author=$(constant 'f.RARE_USER[0].split(" <")[0]')
big_file=$(constant f.BIG_FILE)
echo "rare word: $rare_word"
echo "rare author: $rare_author"
echo "big file: $big_file"

now() { date +%s%N; }
seconds() { awk -v ns=$(($(now) - $1)) 'BEGIN { printf "%.1f", ns / 1e9 }'; }
count() { wc -l | tr -d ' '; }

if [[ $only != mercurial ]]; then
    repo=$folder/git
    echo "git repository: $repo"
    if ! $describe; then
        start=$(now)
        nice -n 15 /usr/bin/python3 "$here/make_git_fixture.py" "$repo" --commits "$commits" "${shape[@]}" \
            "${graph[@]}" >&2
        echo "git seconds: $(seconds "$start")"
    fi
    echo "git commits: $(git -C "$repo" rev-list --count --all)"
    echo "git merges: $(git -C "$repo" rev-list --count --merges --all)"
    echo "git branches: $(git -C "$repo" for-each-ref refs/heads | count)"
    echo "git tags: $(git -C "$repo" for-each-ref refs/tags | count)"
    echo "git rare word commits: $(git -C "$repo" log --all -i -F --grep="$rare_word" --format=%h | count)"
    echo "git rare author commits: $(git -C "$repo" log --all -F --author="$rare_author" --format=%h | count)"
    echo "git big file lines: $(count <"$repo/$big_file")"
    echo "git big file commits on HEAD: $(git -C "$repo" rev-list --count HEAD -- "$big_file")"
fi

if [[ $only != git ]]; then
    repo=$folder/mercurial
    echo "mercurial repository: $repo"
    if ! $describe; then
        start=$(now)
        nice -n 15 /usr/bin/python3 "$here/make_mercurial_fixture.py" "$repo" --changesets "$changesets" \
            "${shape[@]}" >&2
        echo "mercurial seconds: $(seconds "$start")"
    fi
    hg() { HGPLAIN=1 HGRCPATH= command hg -R "$repo" "$@"; }
    echo "mercurial changesets: $(hg log -r 'all()' -T '.\n' | count)"
    echo "mercurial merges: $(hg log -r 'merge()' -T '.\n' | count)"
    echo "mercurial heads: $(hg log -r 'head()' -T '.\n' | count)"
    echo "mercurial bookmarks: $(hg bookmarks -T '{bookmark}\n' | count)"
    echo "mercurial tags: $(hg tags -T '{tag}\n' | { grep -vx tip || true; } | count)"
    echo "mercurial rare word changesets: $(hg log -r "keyword('$rare_word')" -T '.\n' | count)"
    echo "mercurial rare author changesets: $(hg log -r "user('$rare_author')" -T '.\n' | count)"
    echo "mercurial big file lines: $(count <"$repo/$big_file")"
    echo "mercurial big file changesets on @: $(hg log -r "ancestors(.) and file('path:$big_file')" -T '.\n' | count)"
fi
