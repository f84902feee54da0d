#!/usr/bin/python3
"""Build a large Git repository for the snapshot-loading benchmark.

The whole history goes through a single `git fast-import` process fed on
stdin: commits on main, branches forked along the way (some with commits of
their own, a few merged back), annotated and lightweight tags and, with
--remote, remote-tracking branches and upstream settings. The working tree is
then checked out on main and made dirty (modified, deleted, staged new,
renamed and untracked files).

Only the standard library is needed; git must be on PATH:

    python3 bench/make_git_fixture.py /tmp/git-fixture
    python3 bench/make_git_fixture.py /tmp/git-long --commits 200000 --files 5000
"""

import argparse
import bisect
import os
import random
import shutil
import subprocess
import sys
import time


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

# Identity, weight, time zone as Git writes it.
USERS = (
    ("Ada Kowalczyk <ada@example.org>", 30, "+0100"),
    ("Brian O'Neill <brian.oneill@example.com>", 20, "+0000"),
    ("Chen Wei <chen.wei@example.net>", 15, "+0800"),
    ("Zoë Ångström <zoe@example.se>", 12, "+0200"),
    ("dmitri <dmitri@build-07.local>", 8, "+0300"),
    ("Priya Raman <priya@example.in>", 10, "+0530"),
    ("build bot <ci@example.org>", 5, "+0000"),
)
MAINTAINER = USERS[0]

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

TRAILERS = (
    "Signed-off-by: {u}",
    "Reviewed-by: {u}",
    "Co-authored-by: {u}",
)

GITIGNORE = b"/out/\n*.o\n*.pyc\n*~\n"

IDENTITY = (
    "-c", "user.name=Fixture Generator",
    "-c", "user.email=fixture@example.org",
)


def git_environment():
    env = {k: v for k, v in os.environ.items() if not k.startswith("GIT_")}
    env["GIT_CONFIG_NOSYSTEM"] = "1"
    env["GIT_CONFIG_GLOBAL"] = os.devnull
    return env


GIT_ENV = git_environment()


def git(repo, *args, stdin=None):
    try:
        subprocess.run(
            ["git", "-C", repo, *IDENTITY, *args],
            input=stdin,
            env=GIT_ENV,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.PIPE,
            check=True,
        )
    except subprocess.CalledProcessError as e:
        sys.exit("error: git %s failed:\n%s" % (args[0], e.stderr.decode(errors="replace")))


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
    if rng.random() < 0.25:
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
    if rng.random() < 0.15:
        user = rng.choice(USERS)[0]
        parts.append(rng.choice(TRAILERS).format(u=user))
    return "\n\n".join(parts)


def fi_path(path):
    """A path as fast-import reads it; quoted only when it has to be."""
    if path.startswith('"') or "\n" in path or "\\" in path:
        escaped = path.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
        return ('"%s"' % escaped).encode()
    return path.encode()


def data_block(payload):
    return b"data %d\n%s\n" % (len(payload), payload)


class Head:
    """File contents at the tip of one branch."""

    def __init__(self, files):
        self.files = dict(files)
        self.paths = list(self.files)
        self.pos = {p: i for i, p in enumerate(self.paths)}
        # Paths touched on this branch / on main since the fork; drives the
        # (trivial) merge resolution.
        self.touched = set()
        self.main_touched = set()

    def any_path(self, rng):
        while True:
            p = rng.choice(self.paths)
            if p != ".gitignore":
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

    def apply(self, changes):
        for p, data in changes.items():
            if data is None:
                self.remove(p)
            else:
                self.set(p, data)


class Branch:
    def __init__(self, name, fork_index):
        self.name = name
        self.fork_index = fork_index  # position on main's first-parent chain
        self.marks = []  # fork point, then the branch's own commits
        self.head = None  # only while commits or a merge are still to come
        self.pending = 0
        self.merge_back = False


class Builder:
    def __init__(self, out, rng, args):
        self.out = out
        self.rng = rng
        self.args = args
        self.layout = Layout(rng, args.files)
        self.file_cap = args.files + max(50, args.files // 50)
        self.when = 1325376000  # 2012-01-01
        # Spread history so it ends in the past whatever the commit count.
        self.step = max(60, (1704067200 - self.when) // max(1, args.commits))
        self.author_when = 0
        self.serial = 0
        self.dates = [0]  # committer time, by mark
        self.main = None
        self.main_marks = []  # first-parent chain of main
        self.branches = []
        self.merging = []  # branches that will be merged and are not yet
        self.merges = 0
        self.tag_counts = (0, 0)
        self.remote_refs = 0

    def emit(self, *chunks):
        self.out.write(b"".join(chunks))

    def identities(self):
        rng = self.rng
        author = weighted(rng, [(u, u[1]) for u in USERS])
        committer = author
        if author is not MAINTAINER and rng.random() < 0.2:
            committer = MAINTAINER
        # Committer dates rise with every commit; author dates rise too but may
        # lag a little behind, as with rebased or applied patches.
        self.when += int(self.step * rng.uniform(0.05, 1.95))
        lag = int(self.step * rng.uniform(0, 0.5)) if committer is not author else 0
        self.author_when = max(self.author_when + 1, self.when - lag)
        return (
            b"author %s %d %s\n" % (author[0].encode(), self.author_when, author[2].encode()),
            b"committer %s %d %s\n" % (committer[0].encode(), self.when, committer[2].encode()),
        )

    def commit(self, ref, changes, text, parent=None, merge=None):
        """changes: path -> bytes, or None to delete the file."""
        mark = len(self.dates)
        author, committer = self.identities()
        self.dates.append(self.when)
        chunks = [
            b"commit refs/heads/%s\nmark :%d\n" % (ref.encode(), mark),
            author,
            committer,
            data_block(text.encode() + b"\n"),
        ]
        if parent is not None:
            chunks.append(b"from :%d\n" % parent)
        if merge is not None:
            chunks.append(b"merge :%d\n" % merge)
        for p, data in changes.items():
            if data is None:
                chunks.append(b"D %s\n" % fi_path(p))
            else:
                mode = b"100755" if p.endswith(".sh") else b"100644"
                chunks.append(b"M %s inline %s\n" % (mode, fi_path(p)))
                chunks.append(data_block(data))
        chunks.append(b"\n")
        self.emit(*chunks)
        return mark

    def build_history(self):
        rng = self.rng
        args = self.args
        paths = self.layout.initial_paths(args.files)
        self.all_paths = sorted(paths)
        self.path_index = {p: i for i, p in enumerate(self.all_paths)}

        nbatches = max(1, min(6, args.commits // 10))
        order = list(paths)
        rng.shuffle(order)
        # Uneven batches; the first one is the biggest "initial import".
        cuts = sorted(rng.sample(range(1, len(order)), min(nbatches - 1, len(order) - 1)))
        if cuts:
            cuts[0] = max(cuts[0], len(order) // 3)
            cuts = sorted(set(cuts))
        bounds = [0] + cuts + [len(order)]
        files = {}
        for i in range(len(bounds) - 1):
            batch = order[bounds[i]:bounds[i + 1]]
            changes = {p: initial_content(rng, p) for p in batch}
            if i == 0:
                changes[".gitignore"] = GITIGNORE
            files.update(changes)
            text = "Import %d files" % len(batch) if i == 0 else description(rng, batch)
            self.main_marks.append(self.commit("main", changes, text))
        self.main = Head(files)

        first = len(self.main_marks)
        forks, plan = self.branch_plan(first, args.commits)
        for i in range(first, args.commits):
            if i in forks:
                self.fork(forks[i])
            action = plan.get(i)
            if action is None:
                self.main_commit()
            else:
                action()

    def branch_names(self, count):
        rng = self.rng
        names = []
        seen = set()
        # Handed out in this order, so that release-1.9 comes before 1.10.
        fixed = ["release-1.2", "wip", "release-1.9", "old-experiment", "release-1.10",
                 "dev", "release-1.11", "hotfix/startup-crash", "release-2.0"]
        kinds = (("feature", 45), ("fix", 25), ("review", 10), ("named", 20))
        while len(names) < count:
            kind = weighted(rng, kinds)
            if kind == "feature":
                name = "feature/%s" % numbered(rng, rng.choice(WORDS))
            elif kind == "fix":
                name = "fix-%d" % rng.randint(100, 9999)
            elif kind == "review":
                name = "review/%s-%s" % (rng.choice(WORDS), rng.choice(WORDS))
            elif fixed:
                name = fixed.pop(0)
            else:
                name = "topic/%s-%d" % (rng.choice(WORDS), len(names))
            if name not in seen:
                seen.add(name)
                names.append(name)
        return names

    def branch_plan(self, first, total):
        """Fork points, and the slots given to branch commits and merges.

        Every slot in [first, total) is one commit; slots without an entry
        in the plan are ordinary commits on main, and the last one always is.
        """
        rng = self.rng
        every = self.args.branch_every
        if every <= 0:
            return {}, {}
        points = [i for i in range(first, total - 1) if i > 0 and i % every == 0]
        names = self.branch_names(len(points))
        merged = set()
        if points:
            n = min(len(points), rng.randint(2, 3))
            merged = {int(len(points) * f) for f in (0.3, 0.6, 0.85)[:n]}
            if len(merged) < n:
                merged = set(range(n))
        window = max(2, min(every, 40))
        forks = {}
        plan = {}

        def place(slot, action):
            while slot in plan:
                slot += 1
            if slot >= total - 1:
                return None
            plan[slot] = action
            return slot

        for k, (point, name) in enumerate(zip(points, names)):
            branch = Branch(name, None)
            forks[point] = branch
            if k in merged:
                own = rng.randint(1, 3)
            elif rng.random() < 0.35:
                own = rng.randint(1, 3)
            else:
                own = 0
            slot = point - 1
            for offset in sorted(rng.sample(range(1, window + 1), min(own, window))):
                got = place(max(point + offset, slot + 1), lambda b=branch: self.side_commit(b))
                if got is None:
                    break
                slot = got
                branch.pending += 1
            if k in merged and branch.pending:
                got = place(slot + rng.randint(1, window), lambda b=branch: self.merge(b))
                if got is not None:
                    branch.merge_back = True
                    branch.pending += 1
        return forks, plan

    def fork(self, branch):
        branch.fork_index = len(self.main_marks) - 1
        tip = self.main_marks[-1]
        branch.marks.append(tip)
        self.emit(b"reset refs/heads/%s\nfrom :%d\n\n" % (branch.name.encode(), tip))
        self.branches.append(branch)
        if branch.pending:
            branch.head = Head(self.main.files)
        if branch.merge_back:
            self.merging.append(branch)

    def finish(self, branch):
        branch.pending -= 1
        if branch.pending == 0:
            branch.head = None
            if branch in self.merging:
                self.merging.remove(branch)

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
            if p and p in head.files and p not in chosen and p != ".gitignore":
                chosen.append(p)
        return chosen

    def changes_for(self, head):
        rng = self.rng
        if rng.random() < 0.02:
            count = rng.randint(15, 60)
        else:
            count = min(rng.randint(1, 3), rng.randint(1, 6))
        changes = {}
        for p in self.pick_files(head, count):
            self.serial += 1
            changes[p] = modified_content(rng, head.files[p], self.serial)
        r = rng.random()
        if r < 0.06 and len(head.paths) > self.file_cap:
            r = 0.06  # long histories would otherwise keep growing the tree
        if r < 0.06:
            p = self.layout.new_path(rng.choice(self.layout.leaf_dirs))
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
                changes[src] = None
                changes[self.layout.new_path(d)] = head.files[src]
        return changes

    def main_commit(self):
        changes = self.changes_for(self.main)
        text = description(self.rng, sorted(changes))
        self.main_marks.append(self.commit("main", changes, text))
        self.main.apply(changes)
        for branch in self.merging:
            branch.head.main_touched.update(changes)

    def side_commit(self, branch):
        head = branch.head
        changes = self.changes_for(head)
        text = description(self.rng, sorted(changes))
        branch.marks.append(self.commit(branch.name, changes, text, parent=branch.marks[-1]))
        head.apply(changes)
        head.touched.update(changes)
        self.finish(branch)

    def merge(self, branch):
        main = self.main
        other = branch.head
        changes = {}
        for p in other.touched:
            theirs = other.files.get(p)
            ours = main.files.get(p)
            if p not in other.main_touched:
                result = theirs
            elif theirs is None or ours is None or theirs == ours:
                result = ours
            else:
                result = ours + b"merged from %s\n" % branch.name.encode()
            if result != ours:
                changes[p] = result
        text = "Merge branch '%s'" % branch.name
        if self.rng.random() < 0.5:
            text += "\n\n" + description(self.rng, sorted(changes)[:1])
        self.main_marks.append(self.commit("main", changes, text, merge=branch.marks[-1]))
        main.apply(changes)
        self.merges += 1
        self.finish(branch)
        for b in self.merging:
            b.head.main_touched.update(changes)

    def tags(self, count):
        """Version tags rising along main, plus a few on branches."""
        if count <= 0:
            return
        rng = self.rng
        pool = self.main_marks[len(self.main_marks) // 20:] or self.main_marks
        side = [m for b in self.branches for m in b.marks[1:]]
        targets = []
        for _ in range(count):
            if side and rng.random() < 0.15:
                targets.append((rng.choice(side), True))
            else:
                targets.append((rng.choice(pool), False))
        targets.sort()
        kinds = [True] * (count // 2) + [False] * (count - count // 2)
        rng.shuffle(kinds)
        major, minor, patch = 0, 8, 0
        used = set()
        annotated = lightweight = 0
        odd = ["before-refactor", "last-known-good", "perf/baseline", "snapshot-2"]
        for (mark, on_branch), is_annotated in zip(targets, kinds):
            r = rng.random()
            if on_branch and odd and r < 0.4:
                name = odd.pop(0)
            else:
                if r < 0.1:
                    major, minor, patch = major + 1, 0, 0
                elif r < 0.4:
                    minor, patch = minor + 1, 0
                else:
                    patch += 1
                name = "v%d.%d.%d" % (major, minor, patch)
                if rng.random() < 0.1:
                    name += "-rc%d" % rng.randint(1, 3)
            while name in used:
                name += "-1"
            used.add(name)
            if is_annotated:
                tagger = weighted(rng, [(u, u[1]) for u in USERS])
                when = self.dates[mark] + rng.randint(60, 86400)
                message = "Release %s" % name if name.startswith("v") else "Mark %s" % name
                if rng.random() < 0.4:
                    message += "\n\n" + "\n".join(
                        "- " + fill(rng, rng.choice(BODY_LINES)) for _ in range(rng.randint(1, 4))
                    )
                self.emit(
                    b"tag %s\nfrom :%d\n" % (name.encode(), mark),
                    b"tagger %s %d %s\n" % (tagger[0].encode(), when, tagger[2].encode()),
                    data_block(message.encode() + b"\n"),
                )
                annotated += 1
            else:
                self.emit(b"reset refs/tags/%s\nfrom :%d\n\n" % (name.encode(), mark))
                lightweight += 1
        self.tag_counts = (annotated, lightweight)

    def remote_branches(self):
        """Remote-tracking refs for main and about half of the branches.

        Returns the branches whose upstream is configured."""
        rng = self.rng
        main_marks = self.main_marks
        behind = min(3, len(main_marks) - 1)
        tracked = [("main", main_marks[-1 - behind])]
        level, ahead = [], []
        for branch in self.branches:
            if rng.random() >= 0.5:
                continue
            target = branch.marks[-1]
            if rng.random() < 0.4:
                if len(branch.marks) > 1:
                    target = branch.marks[rng.randrange(len(branch.marks) - 1)]
                elif branch.fork_index > 0:
                    target = main_marks[max(0, branch.fork_index - rng.randint(1, 5))]
            tracked.append((branch.name, target))
            (level if target == branch.marks[-1] else ahead).append(branch.name)
        for name, mark in tracked:
            self.emit(b"reset refs/remotes/origin/%s\nfrom :%d\n\n" % (name.encode(), mark))
        self.remote_refs = len(tracked)
        # Upstreams for both kinds: in step with origin, and with unpushed commits.
        return (["main"] + rng.sample(level, min(2, len(level)))
                + rng.sample(ahead, min(2, len(ahead))))


def write_remote_config(dest, upstreams):
    url = os.path.join(os.path.dirname(dest), os.path.basename(dest) + "-origin.git")
    lines = [
        '[remote "origin"]',
        "\turl = %s" % url,
        "\tfetch = +refs/heads/*:refs/remotes/origin/*",
    ]
    for name in upstreams:
        lines += [
            '[branch "%s"]' % name,
            "\tremote = origin",
            "\tmerge = refs/heads/%s" % name,
        ]
    with open(os.path.join(dest, ".git", "config"), "a", encoding="utf-8") as f:
        f.write("\n".join(lines) + "\n")


def dirty_working_copy(dest, rng, layout, head, count):
    tracked = sorted(p for p in head.files if p != ".gitignore")
    shares = [round(count * s) for s in (0.45, 0.15, 0.10, 0.05)]
    if count >= 5:
        shares = [max(1, n) for n in shares]
    n_mod, n_del, n_add, n_mv = shares
    n_mod = min(n_mod, len(tracked))
    n_del = min(n_del, len(tracked) - n_mod)
    n_mv = min(n_mv, len(tracked) - n_mod - n_del)
    n_unk = max(0, count - n_mod - n_del - n_add - n_mv)

    picked = rng.sample(tracked, n_mod + n_del + n_mv)
    modified = picked[:n_mod]
    deleted = picked[n_mod:n_mod + n_del]
    moved = picked[n_mod + n_del:]

    def full(p):
        return os.path.join(dest, p)

    def write(p, data):
        os.makedirs(os.path.dirname(full(p)), exist_ok=True)
        with open(full(p), "wb") as f:
            f.write(data)

    for p in modified:
        with open(full(p), "ab") as f:
            f.write(b"local edit: %s\n" % rng.choice(WORDS).encode())
    for p in deleted:
        os.unlink(full(p))

    added = []
    for i in range(n_add):
        p = layout.new_path(rng.choice(layout.leaf_dirs))
        write(p, initial_content(rng, p) + b"new %d\n" % i)
        added.append(p)

    # What `git mv` does, for all of them in one index update rather than one
    # process (and one rewrite of a large index) per file.
    index_paths = list(added)
    for src in moved:
        d = src.rsplit("/", 1)[0] if "/" in src else ""
        if rng.random() < 0.3:
            d = rng.choice(layout.leaf_dirs)
        dst = layout.new_path(d)
        os.makedirs(os.path.dirname(full(dst)), exist_ok=True)
        os.rename(full(src), full(dst))
        index_paths += [src, dst]
    if index_paths:
        git(dest, "update-index", "--add", "--remove", "-z", "--stdin",
            stdin=b"".join(p.encode() + b"\0" for p in index_paths))

    # Untracked files: roughly half next to tracked files, half in new folders.
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
        write(layout.new_path(d), b"untracked %d\n" % i)

    # A few ignored build products, which must not show up as untracked.
    for p in ("out/obj/main.o", "out/log.txt", "src/cache.pyc", "README.md~"):
        write(p, b"ignored\n")
    return n_mod, n_del, n_add, n_mv, n_unk


def check_destination(dest):
    if os.path.lexists(dest):
        if not os.path.isdir(dest) or os.path.islink(dest):
            sys.exit("error: %s exists and is not a directory" % dest)
        if os.listdir(dest):
            sys.exit("error: %s is not empty; refusing to touch it" % dest)


def main():
    parser = argparse.ArgumentParser(
        description="Generate a large Git repository for benchmarks."
    )
    parser.add_argument("dest", metavar="DEST", help="directory to create (must not exist or be empty)")
    parser.add_argument("--files", type=int, default=50000)
    parser.add_argument("--commits", type=int, default=5000)
    parser.add_argument("--branch-every", type=int, default=200,
                        help="fork a branch every N commits (0: no branches)")
    parser.add_argument("--tags", type=int, default=40)
    parser.add_argument("--changes", type=int, default=3200, help="working-copy changes")
    parser.add_argument("--remote", action="store_true",
                        help="add an origin remote with remote-tracking branches and upstreams")
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    if args.files < 10:
        parser.error("--files must be at least 10")
    if args.commits < 1:
        parser.error("--commits must be at least 1")
    if min(args.branch_every, args.tags, args.changes) < 0:
        parser.error("--branch-every, --tags and --changes must not be negative")
    if shutil.which("git") is None:
        sys.exit("error: git is not on PATH")

    dest = os.path.abspath(args.dest)
    check_destination(dest)
    started = time.monotonic()
    rng = random.Random(args.seed)

    os.makedirs(dest, exist_ok=True)
    git(dest, "-c", "init.defaultBranch=main", "init", "-q")

    importer = subprocess.Popen(
        ["git", "-C", dest, *IDENTITY, "fast-import", "--quiet", "--done"],
        stdin=subprocess.PIPE,
        stderr=subprocess.PIPE,
        env=GIT_ENV,
        bufsize=1 << 20,
    )
    builder = Builder(importer.stdin, rng, args)
    upstreams = []
    try:
        builder.build_history()
        builder.tags(args.tags)
        if args.remote:
            upstreams = builder.remote_branches()
        builder.emit(b"done\n")
        importer.stdin.close()
    except BrokenPipeError:
        pass
    errors = importer.stderr.read()
    if importer.wait() != 0:
        sys.exit("error: git fast-import failed:\n%s" % errors.decode(errors="replace"))

    if args.remote:
        git(dest, "symbolic-ref", "refs/remotes/origin/HEAD", "refs/remotes/origin/main")
        write_remote_config(dest, upstreams)

    git(dest, "checkout", "-q", "-f", "main")
    counts = dirty_working_copy(dest, rng, builder.layout, builder.main, args.changes)

    print(
        "%s: %d files on main, %d commits (%d merges), %d branches, "
        "%d tags (%d annotated), %d remote-tracking refs, "
        "working copy M %d / D %d / A %d / R %d / ? %d, %.1f s"
        % (
            dest,
            len(builder.main.files),
            len(builder.dates) - 1,
            builder.merges,
            len(builder.branches) + 1,
            sum(builder.tag_counts),
            builder.tag_counts[0],
            builder.remote_refs,
            *counts,
            time.monotonic() - started,
        )
    )


if __name__ == "__main__":
    main()
