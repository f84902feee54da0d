#!/usr/bin/python3
"""Build a repository with one long file edited by many commits, for the
annotate benchmark.

The file (big.txt, --lines lines) is written by the first commit; each later
commit rewrites a few dozen lines scattered through it, so that the lines of
the newest version come from every commit. Mercurial's history is written
through its Python API in one transaction, Git's through one
`git fast-import`; both end with the working copy at the newest commit.

    /usr/bin/python3 bench/make_annotate_fixture.py mercurial /tmp/hg-annotate
    /usr/bin/python3 bench/make_annotate_fixture.py git /tmp/git-annotate --commits 300
"""

import argparse
import os
import random
import subprocess
import sys

sys.dont_write_bytecode = True  # no __pycache__ in the source tree
sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
from fixture_content import USERS, WORDS  # noqa: E402

START = 1_600_000_000
FILE = "big.txt"


def versions(lines, commits, seed):
    """(author, seconds, message, content) of each commit, oldest first."""
    rng = random.Random(seed)
    text = ["%05d %s" % (n, " ".join(rng.choice(WORDS) for _ in range(6))) for n in range(lines)]
    for serial in range(commits):
        if serial:
            for n in rng.sample(range(lines), rng.randint(10, 60)):
                text[n] = "%05d %s (edit %d)" % (n, " ".join(rng.choice(WORDS) for _ in range(5)), serial)
        user = USERS[serial % len(USERS)][0]
        if "<" not in user:
            user = "%s <%s@example.com>" % (user, user.split()[0].lower())
        yield user, START + serial * 3600, "edit %d" % serial, ("\n".join(text) + "\n").encode()


def make_git(dest, history):
    env = {k: v for k, v in os.environ.items() if not k.startswith("GIT_")}
    env["GIT_CONFIG_NOSYSTEM"] = "1"
    env["GIT_CONFIG_GLOBAL"] = os.devnull

    def git(*args, stdin=None):
        subprocess.run(["git", "-C", dest, *args], input=stdin, env=env, check=True, stdout=subprocess.DEVNULL)

    git("init", "-q", "-b", "main")
    chunks = []
    for user, when, message, content in history:
        who = ("%s %d +0000" % (user, when)).encode()
        chunks += [b"commit refs/heads/main\n", b"author " + who + b"\n", b"committer " + who + b"\n",
                   b"data %d\n%s\n" % (len(message), message.encode()),
                   b"M 100644 inline " + FILE.encode() + b"\n", b"data %d\n" % len(content), content, b"\n"]
    git("fast-import", "--quiet", stdin=b"".join(chunks))
    git("reset", "-q", "--hard", "main")


def make_mercurial(dest, history):
    os.environ["HGENCODING"] = "utf-8"
    os.environ["HGPLAIN"] = "1"
    os.environ["HGRCPATH"] = ""
    from mercurial import context, hg
    from mercurial import ui as uimod

    ui = uimod.ui.load()
    ui.setconfig(b"ui", b"quiet", b"true")
    repo = hg.repository(ui, dest.encode(), create=True)
    with repo.wlock(), repo.lock(), repo.transaction(b"annotate-fixture"):
        parent = None
        for user, when, message, content in history:
            def file_of(repo_, memctx, path, data=content):
                return context.memfilectx(repo_, memctx, path, data)

            ctx = context.memctx(repo, (parent, None), message.encode(), [FILE.encode()], file_of,
                                 user=user.encode(), date=(when, 0))
            parent = repo.commitctx(ctx)
    hg.update(repo, parent)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("kind", choices=["mercurial", "git"])
    parser.add_argument("dest")
    parser.add_argument("--lines", type=int, default=10_000)
    parser.add_argument("--commits", type=int, default=300)
    parser.add_argument("--seed", type=int, default=7)
    args = parser.parse_args()
    if os.path.exists(args.dest) and os.listdir(args.dest):
        sys.exit("error: %s is not empty" % args.dest)
    os.makedirs(args.dest, exist_ok=True)
    history = versions(args.lines, args.commits, args.seed)
    (make_git if args.kind == "git" else make_mercurial)(args.dest, history)


if __name__ == "__main__":
    main()
