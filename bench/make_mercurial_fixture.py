#!/usr/bin/python3
"""Build a large Mercurial repository for the snapshot-loading benchmark.

Everything happens in-process through Mercurial's Python API: history is
written with in-memory commits inside a single transaction, then the working
copy is checked out at the active bookmark and made dirty (modified, removed,
deleted and unknown files).

With --merge-every the history has no named branches but many anonymous lines
of descent alive at once, merging back (see BranchyHistory); bookmarks mark
the release lines, the open topics and most of the unmerged ones, and @ the
trunk.

Run it with the system interpreter that has the `mercurial` package:

    /usr/bin/python3 bench/make_mercurial_fixture.py /tmp/hg-fixture
    /usr/bin/python3 bench/make_mercurial_fixture.py /tmp/hg-history --files 5000 \
        --changesets 50000 --merge-every 50 --changes 0
"""

import hashlib
import os
import random
import sys
import time

sys.dont_write_bytecode = True  # no __pycache__ in the source tree
sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
from fixture_content import (  # noqa: E402
    IGNORED_FILES, BranchyHistory, Head, HistoryBuilder, Line, add_branchy_options,
    check_branchy_options, check_destination, local_edit, parse_arguments, pick_user,
    topic_name, untracked_files,
)

# Must be set before mercurial is imported: the encoding module reads them at
# import time. UTF-8 lets us store non-ASCII user names and descriptions.
os.environ["HGENCODING"] = "utf-8"
os.environ["HGPLAIN"] = "1"
os.environ["HGRCPATH"] = ""

try:
    from mercurial import bookmarks, context, hg, phases
    from mercurial import ui as uimod
    from mercurial.utils import hashutil, storageutil
except ImportError:
    sys.exit(
        "error: the mercurial Python package is not importable from %s; "
        "run this script with /usr/bin/python3" % sys.executable
    )

# Mercurial hashes with a collision-detecting SHA-1, several times slower than
# hashlib's; for contents like ours the digests are the same.
hashutil.sha1 = hashlib.sha1
storageutil._nullhash = hashlib.sha1(storageutil.sha1nodeconstants.nullid)


class BranchHead(Head):
    """Tip of one named branch."""

    def __init__(self, files, node):
        super().__init__(files, ".hgignore")
        self.node = node
        self.closed = False


HGIGNORE = b"syntax: regexp\n^out/\n\\.o$\n\\.pyc$\n~$\n"


class Builder(HistoryBuilder):
    def __init__(self, repo, rng, args):
        super().__init__(rng, args.files, args.changesets)
        self.repo = repo
        self.args = args
        self.heads = {}
        self.nodes = []  # (node, branch) in commit order
        self.history = None  # the BranchyHistory, with --merge-every

    def commit(self, branch, parents, changes, text, copies=None, extra=None, user=None):
        """changes: path -> bytes, or None to remove the file."""
        repo = self.repo
        copies = copies or {}
        user, _, minutes = user or pick_user(self.rng)

        def filectxfn(repo_, memctx, path):
            data = changes[path.decode()]
            if data is None:
                return None
            p = path.decode()
            src = copies.get(p)
            return context.memfilectx(
                repo_,
                memctx,
                path,
                data,
                isexec=p.endswith(".sh"),
                copysource=src.encode() if src else None,
            )

        ctx = context.memctx(
            repo,
            parents,
            text.encode(),
            [p.encode() for p in changes],
            filectxfn,
            user=user.encode(),
            date=(self.next_date(), -60 * minutes),  # seconds west of UTC
            extra=extra,
            branch=branch.encode(),
        )
        node = repo.commitctx(ctx)
        self.nodes.append((node, branch))
        return node

    def record_default_change(self, paths):
        for name, head in self.heads.items():
            if name != "default":
                head.trunk_touched.update(paths)

    def build_history(self):
        rng = self.rng
        args = self.args
        files = {}
        node = None
        for changes, text in self.initial_import(
                args.files, args.changesets, ".hgignore", HGIGNORE, "import %d files"):
            files.update(changes)
            node = self.commit("default", (node, None), changes, text)
        self.heads["default"] = BranchHead(files, node)

        first = len(self.nodes)
        total = args.changesets
        if args.merge_every:
            trunk = Line("default", Head(files, ".hgignore"))
            trunk.marks = [n for n, _ in self.nodes]
            self.history = BranchyHistory(self, args, total)
            self.history.run(trunk, first)
            return
        plan = self.branch_plan(first, total)
        for i in range(first, total):
            if i in plan:
                plan[i]()
                continue
            branch = "default"
            if i < total - 1:
                r = rng.random()
                if self.open_branch("stable") and r < 0.06:
                    branch = "stable"
                elif self.open_branch("feature/async-io") and r < 0.16:
                    branch = "feature/async-io"
            self.ordinary_commit(branch)

    def commit_on(self, line, changes, text, copies, other, user):
        parents = (line.tip, other.tip if other is not None else None)
        return self.commit("default", parents, changes, text, copies, user=user)

    def merge_title(self, into, other):
        if other is into.base:
            return "merge with %s" % other.name
        if into.base is None:
            return "merge %s" % other.name
        return "merge %s into %s" % (other.name, into.name)

    def branch_plan(self, first, total):
        """Forks, merges and a branch close at fixed points of history."""
        span = total - first
        if span < 40:
            return {}
        at = lambda frac: first + int(span * frac)
        plan = {
            at(0.30): lambda: self.fork("stable"),
            at(0.55): lambda: self.merge("stable"),
            at(0.60): lambda: self.fork("feature/async-io"),
            at(0.80): lambda: self.merge("stable"),
            at(0.84): lambda: self.close("feature/async-io"),
            at(0.85): lambda: self.merge("feature/async-io", drop=True),
        }
        return plan

    def open_branch(self, name):
        head = self.heads.get(name)
        return head is not None and not head.closed

    def fork(self, branch):
        default = self.heads["default"]
        head = BranchHead(default.files, default.node)
        self.heads[branch] = head
        self.ordinary_commit(branch)

    def close(self, branch):
        head = self.heads[branch]
        head.node = self.commit(
            branch, (head.node, None), {}, "close %s after merge" % branch,
            extra={b"close": b"1"},
        )
        head.closed = True

    def merge(self, branch, drop=False):
        default = self.heads["default"]
        other = self.heads[branch]
        changes = other.merge_changes(default, branch)
        text = self.merge_message("merge %s into default" % branch, changes)
        default.node = self.commit("default", (default.node, other.node), changes, text)
        default.apply(changes)
        self.record_default_change(changes)
        other.touched.clear()
        other.trunk_touched.clear()
        if drop:
            del self.heads[branch]

    def ordinary_commit(self, branch):
        head = self.heads[branch]
        changes, rename = self.random_changes(head)
        copies = {}
        if rename:
            src, dst = rename
            changes[dst] = head.files[src]
            copies[dst] = src
            changes[src] = None
        text = self.describe(sorted(changes))
        head.node = self.commit(branch, (head.node, None), changes, text, copies)
        head.apply(changes)
        if branch == "default":
            self.record_default_change(changes)
        else:
            head.touched.update(changes)

    def place_bookmarks(self, count):
        """Returns the bookmark changes and the name of the one to activate."""
        if count <= 0:
            return [], None
        rng = self.rng
        names = ["dev"]
        fixed_names = ["@", "wip", "old experiment", "release-1.2", "release-1.9",
                       "release-1.10", "release-1.11"]
        rng.shuffle(fixed_names)
        attempts = 0
        while len(names) < count and attempts < count * 20:
            attempts += 1
            name = topic_name(rng)
            if name is None:
                if not fixed_names:
                    continue
                name = fixed_names.pop()
            if name not in names:
                names.append(name)
        while len(names) < count:
            names.append("mark-%d" % len(names))

        default_tip = self.heads["default"].node
        targets = [default_tip]
        for name, head in sorted(self.heads.items()):
            if name != "default":
                targets.append(head.node)
        while len(targets) < count:
            if rng.random() < 0.08 and targets:
                targets.append(rng.choice(targets))  # shared changeset
            else:
                targets.append(rng.choice(self.nodes)[0])
        return [(n.encode(), t) for n, t in zip(names, targets)], "dev"

    def branchy_bookmarks(self):
        """@ on the trunk, and one on the tip of every release, every open
        topic and most of the topics that were never deleted; the rest stay
        anonymous heads."""
        history = self.history
        marks = [(b"@", history.trunk.tip)]
        for line in history.refs():
            if line in history.kept and self.rng.random() < 0.3:
                continue
            marks.append((line.name.encode(), line.tip))
        return marks, "@"


def dirty_working_copy(repo, rng, layout, count):
    wvfs = repo.wvfs
    tracked = sorted(p.decode() for p in repo[b"."].manifest() if p != b".hgignore")
    n_mod = round(count * 0.45)
    n_rem = round(count * 0.25)
    n_del = round(count * 0.05)
    if count >= 4:
        n_mod, n_rem, n_del = max(1, n_mod), max(1, n_rem), max(1, n_del)
    n_mod = min(n_mod, len(tracked))
    n_rem = min(n_rem, len(tracked) - n_mod)
    n_del = min(n_del, len(tracked) - n_mod - n_rem)
    n_unk = max(0, count - n_mod - n_rem - n_del)

    picked = rng.sample(tracked, n_mod + n_rem + n_del)
    modified = picked[:n_mod]
    removed = picked[n_mod:n_mod + n_rem]
    deleted = picked[n_mod + n_rem:]

    for p in modified:
        with open(wvfs.join(p.encode()), "ab") as f:
            f.write(local_edit(rng))

    for p in removed + deleted:
        wvfs.unlinkpath(p.encode(), ignoremissing=False)
    with repo.wlock():
        rejected = repo[None].forget([p.encode() for p in removed])
        if rejected:
            raise RuntimeError("could not mark %d files removed" % len(rejected))

    for p, data in untracked_files(rng, layout, n_unk):
        wvfs.write(p.encode(), data)
    for p in IGNORED_FILES:
        wvfs.write(p.encode(), b"ignored\n")
    return n_mod, n_rem, n_del, n_unk


def add_options(parser):
    parser.add_argument("--changesets", type=int, default=5000)
    parser.add_argument("--bookmarks", type=int, help="default 36")
    parser.add_argument("--changes", type=int, default=3200, help="working-copy changes")
    add_branchy_options(parser)


def main():
    parser, args = parse_arguments("Mercurial", add_options)
    if args.changesets < 1:
        parser.error("--changesets must be at least 1")
    check_branchy_options(parser, args, [("bookmarks", "--bookmarks")])
    if args.bookmarks is None:
        args.bookmarks = 36
    if args.bookmarks < 0 or args.changes < 0:
        parser.error("--bookmarks and --changes must not be negative")

    dest = os.path.abspath(args.dest)
    check_destination(dest)
    started = time.monotonic()
    rng = random.Random(args.seed)

    ui = uimod.ui()  # deliberately no load(): ignore system and user hgrc
    ui.setconfig(b"ui", b"username", b"Fixture Generator <fixture@example.org>", b"fixture")
    ui.setconfig(b"ui", b"quiet", b"true", b"fixture")
    ui.setconfig(b"ui", b"interactive", b"false", b"fixture")
    ui.setconfig(b"fsmonitor", b"warn_when_unused", b"false", b"fixture")
    # Commits on many lines in turn start from many different manifests; keep
    # each line's last one at hand instead of rebuilding it from its deltas.
    ui.setconfig(b"format", b"manifestcachesize", b"64", b"fixture")
    os.makedirs(dest, exist_ok=True)
    repo = hg.repository(ui, os.fsencode(dest), create=True).unfiltered()

    builder = Builder(repo, rng, args)
    with repo.wlock(), repo.lock(), repo.transaction(b"fixture") as tr:
        builder.build_history()
        if builder.history:
            marks, active = builder.branchy_bookmarks()
        else:
            marks, active = builder.place_bookmarks(args.bookmarks)
        if marks:
            repo._bookmarks.applychanges(repo, tr, marks)
        # Older history is published; the last few percent stays draft.
        cut = builder.nodes[int(len(builder.nodes) * 0.9)][0]
        phases.advanceboundary(repo, tr, phases.public, [cut])

    repo = hg.repository(ui, os.fsencode(dest))
    target = repo._bookmarks[active.encode()] if active else repo[b"tip"].node()
    with repo.wlock():
        hg.update(repo, target, quietempty=True)
        if active:
            bookmarks.activate(repo, active.encode())
    counts = dirty_working_copy(repo, rng, builder.layout, args.changes)

    branches = {b for _, b in builder.nodes}
    print(
        "%s: %d files at working-copy parent, %d changesets (%d merges), %d named branches, "
        "%d bookmarks (active: %s), working copy M %d / R %d / ! %d / ? %d, %.1f s"
        % (
            dest,
            len(repo[b"."].manifest()),
            len(repo),
            builder.history.merges if builder.history else len(repo.revs(b"merge()")),
            len(branches),
            len(marks),
            active or "none",
            *counts,
            time.monotonic() - started,
        )
    )


if __name__ == "__main__":
    main()
