#!/usr/bin/python3
"""Build a large Mercurial repository for the snapshot-loading benchmark.

Everything happens in-process through Mercurial's Python API: history is
written with in-memory commits inside a single transaction, then the working
copy is checked out at the active bookmark and made dirty (modified, removed,
deleted and unknown files).

Run it with the system interpreter that has the `mercurial` package:

    /usr/bin/python3 bench/make_mercurial_fixture.py /tmp/hg-fixture
"""

import argparse
import bisect
import os
import random
import sys
import time

# Must be set before mercurial is imported: the encoding module reads them at
# import time. UTF-8 lets us store non-ASCII user names and descriptions.
os.environ["HGENCODING"] = "utf-8"
os.environ["HGPLAIN"] = "1"
os.environ["HGRCPATH"] = ""

try:
    from mercurial import bookmarks, context, hg, phases
    from mercurial import ui as uimod
except ImportError:
    sys.exit(
        "error: the mercurial Python package is not importable from %s; "
        "run this script with /usr/bin/python3" % sys.executable
    )


WORDS = (
    "alpha", "archive", "audit", "bank", "beacon", "buffer", "cache", "canvas",
    "cargo", "cipher", "client", "codec", "config", "core", "cursor", "delta",
    "diff", "engine", "event", "filter", "format", "frame", "gateway", "graph",
    "handler", "hash", "index", "input", "journal", "kernel", "layout", "ledger",
    "loader", "lookup", "matrix", "merge", "meta", "model", "module", "network",
    "node", "output", "packet", "parser", "patch", "pipeline", "pool", "portal",
    "queue", "reader", "record", "render", "report", "router", "sample", "scanner",
    "schema", "server", "session", "shader", "signal", "socket", "source", "stack",
    "store", "stream", "table", "task", "theme", "timer", "token", "tracker",
    "tree", "update", "util", "vector", "view", "widget", "worker", "writer",
)

TOP_DIRS = (
    "src", "lib", "docs", "tests", "tools", "assets", "plugins", "platform",
    "scripts", "third_party", "web", "modules", "legacy code", "data", "services",
    "examples", "bench", "locale", "packaging", "contrib",
)

EXTENSIONS = (
    (".c", 14), (".h", 12), (".cpp", 12), (".py", 10), (".txt", 8), (".md", 6),
    (".json", 5), (".rs", 5), (".js", 5), (".xml", 3), (".cfg", 3), (".sh", 3),
    (".yaml", 3), (".ui", 2), (".qml", 2), (".ts", 2), (".in", 1), (".csv", 1),
)

USERS = (
    ("Ada Kowalczyk <ada@example.org>", 30, -3600),
    ("Brian O'Neill <brian.oneill@example.com>", 20, 0),
    ("Chen Wei <chen.wei@example.net>", 15, -28800),
    ("Zoë Ångström <zoe@example.se>", 12, -7200),
    ("dmitri", 8, -10800),
    ("Priya Raman <priya@example.in>", 10, -19800),
    ("build bot <ci@example.org>", 5, 0),
)

VERBS = (
    "fix", "add", "remove", "refactor", "simplify", "rename", "document",
    "speed up", "clean up", "handle", "validate", "cache", "rework", "avoid",
    "support", "deprecate", "split", "merge", "guard against", "test",
)

OBJECTS = (
    "off-by-one in {w}", "{w} lookup", "empty {w} case", "{w} error path",
    "unused {w} helpers", "{w} options", "the {w} {w2} loop", "{w} parsing",
    "crash when {w} is null", "stale {w} entries", "{w} ordering",
    "trailing whitespace", "{w}/{w2} interaction", "slow {w} startup",
    "{w} timeout handling", "locale-dependent {w} formatting",
)

BODY_LINES = (
    "The previous implementation assumed the {w} was always initialised.",
    "This keeps the {w} and the {w2} in sync after a reload.",
    "No functional change intended.",
    "Reported by a user running with a very large {w}.",
    "The old behaviour is kept behind a flag for now.",
    "Measured with the {w} benchmark: roughly 12% faster.",
    "We now reject malformed {w} input instead of guessing.",
    "Callers that relied on the implicit {w} must pass it explicitly.",
    "This also removes a redundant copy of the {w2} buffer.",
    "Tests were updated to cover the {w} case.",
    "See the discussion on the mailing list about {w} semantics.",
    "Windows paths with spaces are handled correctly now.",
)


def weighted(rng, items):
    total = sum(w for _, w in items)
    x = rng.uniform(0, total)
    for value, w in items:
        x -= w
        if x <= 0:
            return value
    return items[-1][0]


def numbered(rng, word):
    """Sometimes suffix a number, spread so that 2 < 10 < 100 ordering matters."""
    r = rng.random()
    if r < 0.25:
        return "%s%d" % (word, rng.choice((1, 2, 3, 9, 10, 11, 20, 100, 101)))
    if r < 0.35:
        return "%s_%d" % (word, rng.randint(0, 250))
    return word


class Layout:
    """Random directory tree and file names, deterministic for a given seed."""

    def __init__(self, rng, nfiles):
        self.rng = rng
        self.taken = set()  # lower-cased full paths, avoids case-fold clashes
        self.dirs = []
        self.leaf_dirs = []
        leaves_wanted = max(1, nfiles // 18)
        fan = max(2, round(leaves_wanted ** (1.0 / 3)))
        ntop = min(len(TOP_DIRS), max(2, fan))
        for top in rng.sample(TOP_DIRS, ntop):
            self._add_dir(top)
            for _ in range(rng.randint(max(1, fan // 2), fan + fan // 2)):
                mid = self._child_dir(top)
                for _ in range(rng.randint(max(1, fan // 2), fan + fan // 2)):
                    self.leaf_dirs.append(self._child_dir(mid))

    def _add_dir(self, path):
        self.taken.add(path.lower())
        self.dirs.append(path)
        return path

    def _child_dir(self, parent):
        for _ in range(50):
            r = self.rng.random()
            if r < 0.04:
                name = "%s %s" % (self.rng.choice(WORDS), self.rng.choice(WORDS))
            elif r < 0.1:
                name = self.rng.choice(WORDS).capitalize()
            else:
                name = numbered(self.rng, self.rng.choice(WORDS))
            path = "%s/%s" % (parent, name)
            if path.lower() not in self.taken:
                return self._add_dir(path)
        return self._add_dir("%s/d%d" % (parent, len(self.dirs)))

    def file_name(self):
        rng = self.rng
        r = rng.random()
        if r < 0.01:
            stem = "%s notes %d" % (rng.choice(WORDS), rng.randint(1, 12))
        elif r < 0.15:
            stem = rng.choice(WORDS).capitalize() + rng.choice(WORDS).capitalize()
        elif r < 0.3:
            stem = "%s_%s" % (rng.choice(WORDS), rng.choice(WORDS))
        elif r < 0.4:
            stem = "test_" + rng.choice(WORDS)
        else:
            stem = numbered(rng, rng.choice(WORDS))
        return stem + weighted(rng, EXTENSIONS)

    def new_path(self, directory):
        for _ in range(50):
            name = self.file_name()
            path = "%s/%s" % (directory, name) if directory else name
            if path.lower() not in self.taken:
                self.taken.add(path.lower())
                return path
        path = "%s/f%d.txt" % (directory, len(self.taken))
        self.taken.add(path.lower())
        return path

    def initial_paths(self, nfiles):
        rng = self.rng
        paths = []
        # Most files live in leaf folders, some in the folders above them.
        weights = [(d, 1.0) for d in self.leaf_dirs]
        leaves = set(self.leaf_dirs)
        weights += [(d, 0.15) for d in self.dirs if d not in leaves]
        dirs = [d for d, _ in weights]
        cum = []
        acc = 0.0
        for _, w in weights:
            acc += w * rng.uniform(0.3, 1.7)
            cum.append(acc)
        for root in ("README.md", "CMakeLists.txt", "LICENSE", "Makefile"):
            if len(paths) < nfiles:
                self.taken.add(root.lower())
                paths.append(root)
        while len(paths) < nfiles:
            d = dirs[min(len(dirs) - 1, bisect.bisect(cum, rng.uniform(0, acc)))]
            paths.append(self.new_path(d))
        return paths


def fill(rng, template):
    return template.format(w=rng.choice(WORDS), w2=rng.choice(WORDS))


def initial_content(rng, path):
    lines = ["# %s" % path.rsplit("/", 1)[-1], ""]
    for _ in range(rng.randint(3, 14)):
        lines.append(" ".join(rng.choice(WORDS) for _ in range(rng.randint(2, 9))))
    return ("\n".join(lines) + "\n").encode()


def modified_content(rng, data, serial):
    lines = data.split(b"\n")[:-1]
    newline = (
        "%s %s (%d)" % (rng.choice(WORDS), rng.choice(WORDS), serial)
    ).encode()
    r = rng.random()
    if r < 0.4 and len(lines) > 2:
        lines[rng.randrange(2, len(lines))] = newline
    elif r < 0.8 or len(lines) < 4:
        lines.insert(rng.randint(2, len(lines)), newline)
    else:
        del lines[rng.randrange(2, len(lines))]
    if len(lines) > 40:
        del lines[2]
    return b"\n".join(lines) + b"\n"


def description(rng, paths):
    area = paths[0].split("/")[0] if paths else "repo"
    if rng.random() < 0.5 and paths:
        area = paths[0].rsplit("/", 1)[-1].split(".")[0]
    summary = "%s: %s %s" % (area, rng.choice(VERBS), fill(rng, rng.choice(OBJECTS)))
    if rng.random() < 0.05:
        summary += " and make the %s behave consistently across platforms" % rng.choice(WORDS)
    parts = [summary]
    r = rng.random()
    if r < 0.25:
        return summary
    for _ in range(rng.randint(1, 3)):
        if rng.random() < 0.2:
            para = "\n".join(
                "- " + fill(rng, rng.choice(BODY_LINES)) for _ in range(rng.randint(2, 4))
            )
        else:
            para = "\n".join(
                fill(rng, rng.choice(BODY_LINES)) for _ in range(rng.randint(1, 4))
            )
        parts.append(para)
    if rng.random() < 0.2:
        parts.append("Fixes #%d" % rng.randint(100, 9999))
    return "\n\n".join(parts)


class Head:
    """File contents at the tip of one named branch."""

    def __init__(self, files, node):
        self.files = dict(files)
        self.paths = list(self.files)
        self.pos = {p: i for i, p in enumerate(self.paths)}
        self.node = node
        # Paths touched on this branch / on default since the last merge
        # into default; drives the (trivial) merge resolution.
        self.touched = set()
        self.default_touched = set()
        self.closed = False

    def any_path(self, rng):
        while True:
            p = rng.choice(self.paths)
            if p != ".hgignore":
                return p

    def set(self, path, data):
        if path not in self.files:
            self.pos[path] = len(self.paths)
            self.paths.append(path)
        self.files[path] = data

    def remove(self, path):
        del self.files[path]
        i = self.pos.pop(path)
        last = self.paths.pop()
        if i < len(self.paths):
            self.paths[i] = last
            self.pos[last] = i


HGIGNORE = b"syntax: regexp\n^out/\n\\.o$\n\\.pyc$\n~$\n"


class Builder:
    def __init__(self, repo, rng, args):
        self.repo = repo
        self.rng = rng
        self.args = args
        self.layout = Layout(rng, args.files)
        self.when = 1325376000  # 2012-01-01
        # Spread history so it ends in the past whatever the changeset count.
        self.step = max(60, (1704067200 - self.when) // max(1, args.changesets))
        self.serial = 0
        self.heads = {}
        self.nodes = []  # (node, branch) in commit order
        self.path_index = {}
        self.all_paths = []

    def next_date(self):
        self.when += int(self.step * self.rng.uniform(0.05, 1.95))
        return self.when

    def commit(self, branch, parents, changes, text, copies=None, extra=None):
        """changes: path -> bytes, or None to remove the file."""
        repo = self.repo
        copies = copies or {}
        user, _, tz = weighted(self.rng, [((u, w, tz), w) for u, w, tz in USERS])

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
            date=(self.next_date(), tz),
            extra=extra,
            branch=branch.encode(),
        )
        node = repo.commitctx(ctx)
        self.nodes.append((node, branch))
        return node

    def record_default_change(self, paths):
        for name, head in self.heads.items():
            if name != "default":
                head.default_touched.update(paths)

    def build_history(self):
        rng = self.rng
        args = self.args
        paths = self.layout.initial_paths(args.files)
        self.all_paths = sorted(paths)
        self.path_index = {p: i for i, p in enumerate(self.all_paths)}

        nbatches = max(1, min(6, args.changesets // 10))
        order = list(paths)
        rng.shuffle(order)
        # Uneven batches; the first one is the biggest "initial import".
        cuts = sorted(rng.sample(range(1, len(order)), min(nbatches - 1, len(order) - 1)))
        if cuts:
            cuts[0] = max(cuts[0], len(order) // 3)
            cuts = sorted(set(cuts))
        bounds = [0] + cuts + [len(order)]
        files = {}
        node = None
        for i in range(len(bounds) - 1):
            batch = order[bounds[i]:bounds[i + 1]]
            changes = {p: initial_content(rng, p) for p in batch}
            if i == 0:
                changes[".hgignore"] = HGIGNORE
            files.update(changes)
            text = "import %d files" % len(batch) if i == 0 else description(rng, batch)
            node = self.commit("default", (node, None), changes, text)
        self.heads["default"] = Head(files, node)

        first = len(self.nodes)
        total = args.changesets
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
        head = Head(default.files, default.node)
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
        changes = {}
        for p in other.touched:
            theirs = other.files.get(p)
            ours = default.files.get(p)
            if p not in other.default_touched:
                result = theirs
            elif theirs is None or ours is None or theirs == ours:
                result = ours
            else:
                result = ours + b"merged from %s\n" % branch.encode()
            if result != ours:
                changes[p] = result
        text = "merge %s into default" % branch
        if self.rng.random() < 0.5:
            text += "\n\n" + description(self.rng, sorted(changes)[:1])
        default.node = self.commit("default", (default.node, other.node), changes, text)
        for p, data in changes.items():
            if data is None:
                default.remove(p)
            else:
                default.set(p, data)
        self.record_default_change(changes)
        other.touched.clear()
        other.default_touched.clear()
        if drop:
            del self.heads[branch]

    def pick_files(self, head, count):
        rng = self.rng
        anchor = head.any_path(rng)
        chosen = [anchor]
        idx = self.path_index.get(anchor)
        tries = 0
        while len(chosen) < count and tries < count * 10:
            tries += 1
            if idx is not None and rng.random() < 0.7:
                j = idx + rng.randint(-12, 12)
                p = self.all_paths[j] if 0 <= j < len(self.all_paths) else None
            else:
                p = rng.choice(head.paths)
            if p and p in head.files and p not in chosen and p != ".hgignore":
                chosen.append(p)
        return chosen

    def ordinary_commit(self, branch):
        rng = self.rng
        head = self.heads[branch]
        r = rng.random()
        if r < 0.02:
            count = rng.randint(15, 60)
        else:
            count = min(rng.randint(1, 3), rng.randint(1, 6))
        changes = {}
        copies = {}
        for p in self.pick_files(head, count):
            self.serial += 1
            changes[p] = modified_content(rng, head.files[p], self.serial)
        r = rng.random()
        if r < 0.06:
            d = rng.choice(self.layout.leaf_dirs)
            p = self.layout.new_path(d)
            changes[p] = initial_content(rng, p)
        elif r < 0.09 and len(head.paths) > 10:
            victim = head.any_path(rng)
            if victim not in changes:
                changes[victim] = None
        elif r < 0.11 and len(head.paths) > 10:
            src = head.any_path(rng)
            if src not in changes:
                d = src.rsplit("/", 1)[0] if "/" in src else ""
                if rng.random() < 0.3:
                    d = rng.choice(self.layout.leaf_dirs)
                dst = self.layout.new_path(d)
                changes[dst] = head.files[src]
                copies[dst] = src
                changes[src] = None
        if not changes:
            p = head.any_path(rng)
            self.serial += 1
            changes[p] = modified_content(rng, head.files[p], self.serial)

        text = description(rng, sorted(changes))
        head.node = self.commit(branch, (head.node, None), changes, text, copies)
        for p, data in changes.items():
            if data is None:
                head.remove(p)
            else:
                head.set(p, data)
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
        kinds = (("feature", 45), ("fix", 25), ("review", 10), ("named", 20))
        attempts = 0
        while len(names) < count and attempts < count * 20:
            attempts += 1
            kind = weighted(rng, kinds)
            if kind == "feature":
                name = "feature/%s" % numbered(rng, rng.choice(WORDS))
            elif kind == "fix":
                name = "fix-%d" % rng.randint(100, 9999)
            elif kind == "review":
                name = "review/%s-%s" % (rng.choice(WORDS), rng.choice(WORDS))
            elif fixed_names:
                name = fixed_names.pop()
            else:
                continue
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
            f.write(b"local edit: %s\n" % rng.choice(WORDS).encode())

    for p in removed + deleted:
        wvfs.unlinkpath(p.encode(), ignoremissing=False)
    with repo.wlock():
        rejected = repo[None].forget([p.encode() for p in removed])
        if rejected:
            raise RuntimeError("could not mark %d files removed" % len(rejected))

    # Unknown files: roughly half next to tracked files, half in new folders.
    new_dirs = []
    for _ in range(max(1, n_unk // 40)):
        parent = rng.choice(layout.dirs + [""])
        name = rng.choice(("scratch", "tmp notes", "new_%s" % rng.choice(WORDS),
                           "Draft%d" % rng.randint(1, 30)))
        d = "%s/%s" % (parent, name) if parent else name
        if rng.random() < 0.3:
            d += "/%s" % numbered(rng, rng.choice(WORDS))
        new_dirs.append(d)
    for i in range(n_unk):
        d = rng.choice(layout.dirs) if i % 2 == 0 else rng.choice(new_dirs)
        p = layout.new_path(d)
        wvfs.write(p.encode(), b"untracked %d\n" % i)

    # A few ignored build products, which must not show up as unknown.
    for p in ("out/obj/main.o", "out/log.txt", "src/cache.pyc", "README.md~"):
        wvfs.write(p.encode(), b"ignored\n")
    return n_mod, n_rem, n_del, n_unk


def check_destination(dest):
    if os.path.lexists(dest):
        if not os.path.isdir(dest) or os.path.islink(dest):
            sys.exit("error: %s exists and is not a directory" % dest)
        if os.listdir(dest):
            sys.exit("error: %s is not empty; refusing to touch it" % dest)


def main():
    parser = argparse.ArgumentParser(
        description="Generate a large Mercurial repository for benchmarks."
    )
    parser.add_argument("dest", metavar="DEST", help="directory to create (must not exist or be empty)")
    parser.add_argument("--files", type=int, default=50000)
    parser.add_argument("--changesets", type=int, default=5000)
    parser.add_argument("--bookmarks", type=int, default=36)
    parser.add_argument("--changes", type=int, default=3200, help="working-copy changes")
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    if args.files < 10:
        parser.error("--files must be at least 10")
    if args.changesets < 1:
        parser.error("--changesets must be at least 1")
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
    os.makedirs(dest, exist_ok=True)
    repo = hg.repository(ui, os.fsencode(dest), create=True).unfiltered()

    builder = Builder(repo, rng, args)
    with repo.wlock(), repo.lock(), repo.transaction(b"fixture") as tr:
        builder.build_history()
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
        "%s: %d files at working-copy parent, %d changesets, %d named branches, "
        "%d bookmarks (active: %s), working copy M %d / R %d / ! %d / ? %d, %.1f s"
        % (
            dest,
            len(repo[b"."].manifest()),
            len(repo),
            len(branches),
            len(marks),
            active or "none",
            *counts,
            time.monotonic() - started,
        )
    )


if __name__ == "__main__":
    main()
