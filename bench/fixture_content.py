"""What the Mercurial and Git fixture generators have in common.

Names, file contents, commit messages and the shape of history are made
here from one seeded random.Random; the generators only turn them into
changesets or commits. The order in which the random numbers are drawn is
part of what a seed means, so keep it when changing anything below.
"""

import argparse
import bisect
import math
import os
import sys


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

# User, weight, minutes east of UTC. "dmitri" commits with a bare login name.
USERS = (
    ("Ada Kowalczyk <ada@example.org>", 30, 60),
    ("Brian O'Neill <brian.oneill@example.com>", 20, 0),
    ("Chen Wei <chen.wei@example.net>", 15, 480),
    ("Zoë Ångström <zoe@example.se>", 12, 120),
    ("dmitri", 8, 180),
    ("Priya Raman <priya@example.in>", 10, 330),
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

TOPIC_KINDS = (("feature", 45), ("fix", 25), ("review", 10), ("named", 20))

# Build products that both generators' ignore files cover; they must not show
# up as untracked.
IGNORED_FILES = ("out/obj/main.o", "out/log.txt", "src/cache.pyc", "README.md~")

# Only in branchy histories: a word and an author that turn up every few
# thousand commits, so that searches have hits at every depth, and one long
# file that a few hundred commits edit, for annotate.
RARE_WORD = "quokka"
RARE_USER = ("Oona Rask <oona.rask@example.fi>", 0, 120)
BIG_FILE = "src/dispatch_table.c"

HISTORY_START = 1325376000  # 2012-01-01
HISTORY_END = 1704067200  # 2024-01-01


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


def pick_user(rng):
    return weighted(rng, [(u, u[1]) for u in USERS])


def topic_name(rng):
    """A feature, fix or review branch name, or None where the caller should
    use one of its own fixed names."""
    kind = weighted(rng, TOPIC_KINDS)
    if kind == "feature":
        return "feature/%s" % numbered(rng, rng.choice(WORDS))
    if kind == "fix":
        return "fix-%d" % rng.randint(100, 9999)
    if kind == "review":
        return "review/%s-%s" % (rng.choice(WORDS), rng.choice(WORDS))
    return None


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

    def moved_path(self, src):
        """Where src goes when renamed: mostly its own folder, else a leaf one."""
        d = src.rsplit("/", 1)[0] if "/" in src else ""
        if self.rng.random() < 0.3:
            d = self.rng.choice(self.leaf_dirs)
        return self.new_path(d)

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


def description(rng, paths, trailer=None):
    """A commit message about paths; trailer(rng), if given, makes a closing
    line such as a sign-off that some messages get."""
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
    if trailer is not None and rng.random() < 0.15:
        parts.append(trailer(rng))
    return "\n\n".join(parts)


class Head:
    """File contents at the tip of one branch."""

    def __init__(self, files, ignore_file):
        self.files = dict(files)
        self.paths = list(self.files)
        self.pos = {p: i for i, p in enumerate(self.paths)}
        self.ignore_file = ignore_file
        self.reserved = {ignore_file}  # never picked for random changes
        self.focus = None  # paths that changes on this branch start near
        # Paths touched on this branch / on the trunk since the fork or the
        # last merge; drives the (trivial) merge resolution.
        self.touched = set()
        self.trunk_touched = set()

    def any_path(self, rng):
        while True:
            p = rng.choice(self.paths)
            if p not in self.reserved:
                return p

    def anchor_path(self, rng):
        """Where a change starts: at one of the focus paths, if any is left."""
        if self.focus:
            p = rng.choice(self.focus)
            if p in self.files:
                return p
        return self.any_path(rng)

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
        """changes: path -> bytes, or None to delete the file."""
        for p, data in changes.items():
            if data is None:
                self.remove(p)
            else:
                self.set(p, data)

    def fork(self):
        """A head for a new branch that starts from this one."""
        head = Head(self.files, self.ignore_file)
        head.reserved = set(self.reserved)
        return head

    def merge_changes(self, trunk, name):
        """What merging this branch, called name, changes on trunk."""
        return merged_files(self.touched, self.trunk_touched, self.files, trunk.files, name)

    def catch_up_changes(self, trunk, name):
        """What merging trunk, called name, into this branch changes on it."""
        return merged_files(self.trunk_touched, self.touched, trunk.files, self.files, name)


def merged_files(theirs_touched, ours_touched, theirs_files, ours_files, name):
    """The (trivial) resolution of a merge: files only they touched become
    theirs; files both sides changed differently keep ours plus a line."""
    changes = {}
    # Sorted: the order of added and removed paths decides the order of
    # head.paths, which later random picks depend on.
    for p in sorted(theirs_touched):
        theirs = theirs_files.get(p)
        ours = ours_files.get(p)
        if p not in ours_touched:
            result = theirs
        elif theirs is None or ours is None or theirs == ours:
            result = ours
        else:
            result = ours + b"merged from %s\n" % name.encode()
        if result != ours:
            changes[p] = result
    return changes


class HistoryBuilder:
    """Layout, clock and change picking shared by both generators' builders."""

    def __init__(self, rng, nfiles, ncommits, trailer=None):
        self.rng = rng
        self.layout = Layout(rng, nfiles)
        self.trailer = trailer
        self.when = HISTORY_START
        # Spread history so it ends in the past whatever the commit count.
        self.step = max(60, (HISTORY_END - self.when) // max(1, ncommits))
        self.serial = 0
        self.all_paths = []
        self.path_index = {}
        # Long histories would otherwise keep growing the tree.
        self.file_cap = nfiles + max(50, nfiles // 50)

    def next_date(self):
        self.when += int(self.step * self.rng.uniform(0.05, 1.95))
        return self.when

    def describe(self, paths):
        return description(self.rng, paths, self.trailer)

    def merge_message(self, text, changes):
        if self.rng.random() < 0.5:
            text += "\n\n" + self.describe(sorted(changes)[:1])
        return text

    def initial_import(self, nfiles, ncommits, ignore_file, ignore_data, first_message):
        """Yields (changes, message) for the first few commits, which add all
        the initial files; the first one also adds the ignore file."""
        rng = self.rng
        paths = self.layout.initial_paths(nfiles)
        self.all_paths = sorted(paths)
        self.path_index = {p: i for i, p in enumerate(self.all_paths)}

        nbatches = max(1, min(6, ncommits // 10))
        order = list(paths)
        rng.shuffle(order)
        # Uneven batches; the first one is the biggest "initial import".
        cuts = sorted(rng.sample(range(1, len(order)), min(nbatches - 1, len(order) - 1)))
        if cuts:
            cuts[0] = max(cuts[0], len(order) // 3)
            cuts = sorted(set(cuts))
        bounds = [0] + cuts + [len(order)]
        for i in range(len(bounds) - 1):
            batch = order[bounds[i]:bounds[i + 1]]
            changes = {p: initial_content(rng, p) for p in batch}
            if i == 0:
                changes[ignore_file] = ignore_data
                text = first_message % len(batch)
            else:
                text = self.describe(batch)
            yield changes, text

    def pick_files(self, head, count):
        """count files of head, mostly neighbours of one another in path order."""
        rng = self.rng
        anchor = head.anchor_path(rng)
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
            if p and p in head.files and p not in chosen and p not in head.reserved:
                chosen.append(p)
        return chosen

    def random_changes(self, head, file_cap=None):
        """Edits to a few files of head, sometimes with a file added or deleted.

        Returns the changes (path -> bytes, or None to delete the file) and,
        for the occasional rename, (source, destination), which the caller
        adds to the changes itself: Mercurial also records the copy source.
        No files are added while head has more than file_cap of them.
        """
        rng = self.rng
        layout = self.layout
        if rng.random() < 0.02:
            count = rng.randint(15, 60)
        else:
            count = min(rng.randint(1, 3), rng.randint(1, 6))
        changes = {}
        for p in self.pick_files(head, count):
            self.serial += 1
            changes[p] = modified_content(rng, head.files[p], self.serial)
        rename = None
        r = rng.random()
        if r < 0.06 and file_cap is not None and len(head.paths) > file_cap:
            r = 0.06
        if r < 0.06:
            p = layout.new_path(rng.choice(layout.leaf_dirs))
            changes[p] = initial_content(rng, p)
        elif r < 0.09 and len(head.paths) > 10:
            victim = head.any_path(rng)
            if victim not in changes:
                changes[victim] = None
        elif r < 0.11 and len(head.paths) > 10:
            src = head.any_path(rng)
            if src not in changes:
                rename = (src, layout.moved_path(src))
        return changes, rename

    def line_changes(self, head):
        """random_changes() with a rename written out: the source deleted, the
        destination added. Returns the changes and {destination: source}."""
        changes, rename = self.random_changes(head, self.file_cap)
        copies = {}
        if rename:
            src, dst = rename
            changes[src] = None
            changes[dst] = head.files[src]
            copies[dst] = src
        return changes, copies

    # What a generator does when a branchy history forks or ends a line, and
    # how it titles a merge; commit_on(line, changes, text, copies, other,
    # user) it must provide itself.

    def fork_line(self, line):
        pass

    def end_line(self, line, keep):
        pass

    def merge_title(self, into, other):
        return "Merge %s into %s" % (other.name, into.name)


def local_edit(rng):
    """A line to append to a tracked file in the working copy."""
    return b"local edit: %s\n" % rng.choice(WORDS).encode()


def untracked_files(rng, layout, count):
    """(path, bytes) for count files the repository does not know about:
    roughly half next to tracked files, half in new folders."""
    new_dirs = []
    for _ in range(max(1, count // 40)):
        parent = rng.choice(layout.dirs + [""])
        name = rng.choice(("scratch", "tmp notes", "new_%s" % rng.choice(WORDS),
                           "Draft%d" % rng.randint(1, 30)))
        d = "%s/%s" % (parent, name) if parent else name
        if rng.random() < 0.3:
            d += "/%s" % numbered(rng, rng.choice(WORDS))
        new_dirs.append(d)
    files = []
    for i in range(count):
        d = rng.choice(layout.dirs) if i % 2 == 0 else rng.choice(new_dirs)
        files.append((layout.new_path(d), b"untracked %d\n" % i))
    return files


def check_destination(dest):
    if os.path.lexists(dest):
        if not os.path.isdir(dest) or os.path.islink(dest):
            sys.exit("error: %s exists and is not a directory" % dest)
        if os.listdir(dest):
            sys.exit("error: %s is not empty; refusing to touch it" % dest)


def parse_arguments(kind, add_options):
    """Parses the command line; add_options(parser) adds the generator's own
    options. Returns the parser too, for checks of those options."""
    parser = argparse.ArgumentParser(
        description="Generate a large %s repository for benchmarks." % kind
    )
    parser.add_argument("dest", metavar="DEST", help="directory to create (must not exist or be empty)")
    parser.add_argument("--files", type=int, default=50000)
    add_options(parser)
    parser.add_argument("--seed", type=int, default=1)
    args = parser.parse_args()
    if args.files < 10:
        parser.error("--files must be at least 10")
    return parser, args


def add_branchy_options(parser):
    """Options for a history with many branches and merges; both generators
    keep their usual shape unless --merge-every is given."""
    group = parser.add_argument_group(
        "branchy history", "many lines of descent alive at once, merging back")
    group.add_argument("--merge-every", type=int, default=0, metavar="N",
                       help="merge a branch back about every N commits (0: the usual shape)")
    group.add_argument("--parallel-branches", type=int, default=8, metavar="K",
                       help="topic branches open at any time")
    group.add_argument("--rare-every", type=int, default=5000, metavar="N",
                       help="'%s' in a message and %s as author, each about every N "
                            "commits (0: never)" % (RARE_WORD, RARE_USER[0].split(" <")[0]))
    group.add_argument("--big-file-lines", type=int, default=10000, metavar="LINES",
                       help="lines of %s (0: no such file)" % BIG_FILE)
    group.add_argument("--big-file-commits", type=int, default=300, metavar="N",
                       help="about how many commits edit it")


def check_branchy_options(parser, args, plain_options):
    """plain_options: (attribute, option) pairs that only the usual shape
    uses; their defaults must be None."""
    if args.merge_every < 0:
        parser.error("--merge-every must not be negative")
    if args.merge_every == 0:
        return
    for attribute, option in plain_options:
        if getattr(args, attribute) is not None:
            parser.error("%s does not go with --merge-every" % option)
    if args.parallel_branches < 1:
        parser.error("--parallel-branches must be at least 1")
    if min(args.rare_every, args.big_file_lines, args.big_file_commits) < 0:
        parser.error("--rare-every, --big-file-lines and --big-file-commits must not be negative")


def big_file_line(rng, serial):
    w, w2, w3 = rng.choice(WORDS), rng.choice(WORDS), rng.choice(WORDS)
    return ('    {"%s.%s", %s_%s_%s, %d},' % (w, w2, w2, w3, "handler", serial)).encode()


def big_file(rng, lines):
    return b"\n".join(big_file_line(rng, n) for n in range(lines)) + b"\n"


def edited_big_file(rng, data, serial, lines_wanted):
    """data with one stretch of lines rewritten; the length stays near
    lines_wanted."""
    lines = data.split(b"\n")[:-1]
    start = rng.randrange(len(lines))
    removed = rng.randint(1, 12)
    grow = rng.randint(-3, 3)
    if len(lines) + grow > lines_wanted + 50:
        grow = -abs(grow)
    elif len(lines) + grow < lines_wanted - 50:
        grow = abs(grow)
    added = max(0, removed + grow)
    lines[start:start + removed] = [big_file_line(rng, serial) for _ in range(added)]
    return b"\n".join(lines) + b"\n"


def with_rare_word(rng, text):
    summary, newline, rest = text.partition("\n")
    word = RARE_WORD if rng.random() < 0.7 else RARE_WORD.capitalize()
    return "%s in %s mode%s%s" % (summary, word, newline, rest)


class Line:
    """One line of descent in a branchy history: the trunk, a release branch
    or a topic branch."""

    def __init__(self, name, head, base=None, length=0.0):
        self.name = name
        self.head = head  # files at its tip; None once the line has ended
        self.base = base  # the line it forked from and merges back into
        self.length = length  # about how many commits it gets before merging
        self.marks = []  # the generator's commit ids: fork point, then its own
        self.fork_index = 0  # where on the trunk's marks it forked
        self.children = []  # open lines that will merge into this one
        self.live = True  # releases: still getting commits and hotfixes
        self.forward = False  # releases: has changes the trunk has not merged

    @property
    def tip(self):
        return self.marks[-1]

    @property
    def own(self):
        return len(self.marks) - 1


TRUNK_SHARE = 0.3  # of ordinary commits, made on the trunk itself
RELEASE_SHARE = 0.02  # made on each live release
HOTFIX_SHARE = 0.12  # of new topics, forked from a live release
CATCH_UP = 0.005  # of topic commits, a merge of what its base has done since
ABANDONED = 0.06  # of topics, left unmerged
KEPT = 0.05  # of merged topics, whose branch is not deleted
LIVE_RELEASES = 3
RELEASES = 10  # over the whole history
LONGEST_TOPIC = 1000  # topics' lengths are spread evenly on a log scale up to this


class BranchyHistory:
    """Drives a builder through a history with many lines of descent alive at
    once. Topic branches fork from the trunk and merge back after a few to a
    few hundred commits; some fork from a release branch instead and merge
    into it, and the release is then merged forward into the trunk; topics
    sometimes merge their base into themselves; a few are never merged.

    One commit is made per slot. Merges back come about every --merge-every
    slots; the topic merged is the one furthest along its own length, so
    lengths spread as widely as the lengths drawn for them.

    The builder provides rng, describe(), merge_message(), line_changes(),
    commit_on(), fork_line(), end_line() and merge_title()."""

    def __init__(self, builder, args, total):
        self.builder = builder
        self.rng = builder.rng
        self.args = args
        self.total = total
        self.trunk = None
        self.topics = []
        self.releases = []
        self.kept = []  # ended topics whose branch stays
        self.names = set()
        self.merges = 0
        never = total + 1
        self.next_merge = self.next_release = never
        self.next_rare_word = self.next_rare_user = self.next_big_edit = never
        self.big_every = self.release_every = 0

    def gap(self, every):
        return self.rng.randint(max(1, every // 2), max(1, every + every // 2))

    def refs(self):
        """Lines that keep a branch or bookmark at the end, trunk apart."""
        return self.releases + self.topics + self.kept

    def run(self, trunk, first):
        """trunk: a Line whose marks hold the commits made so far."""
        args = self.args
        self.trunk = trunk
        self.names.add(trunk.name)
        span = max(1, self.total - first)
        if args.big_file_lines and first < self.total - 1:
            self.add_big_file()
            first += 1
            if args.big_file_commits:
                self.big_every = span // args.big_file_commits
                self.next_big_edit = first + self.gap(self.big_every)
        self.next_merge = first + self.gap(args.merge_every)
        while len(self.topics) < args.parallel_branches:
            self.open_topic()
        self.release_every = max(1, span // RELEASES)
        self.next_release = first + self.gap(self.release_every)
        if args.rare_every:
            self.next_rare_word = first + self.gap(args.rare_every)
            self.next_rare_user = first + self.gap(args.rare_every)
        for i in range(first, self.total):
            self.step(i)

    def step(self, i):
        if i == self.total - 1:
            self.ordinary(self.trunk, i)  # the trunk ends with the newest commit
            return
        if i >= self.next_release:
            self.fork_release(i)
        if i >= self.next_merge and self.merge_one(i):
            return
        line = self.pick_line()
        if line in self.topics and line.head.trunk_touched and self.rng.random() < CATCH_UP:
            self.merge(line, line.base)
        else:
            self.ordinary(line, i)

    def pick_line(self):
        rng = self.rng
        r = rng.random()
        if r < TRUNK_SHARE:
            return self.trunk
        live = [line for line in self.releases if line.live]
        k = int((r - TRUNK_SHARE) / RELEASE_SHARE)
        if k < len(live):
            return live[k]
        return rng.choice(self.topics)

    def unique_name(self, name):
        n = 2
        candidate = name
        while candidate in self.names:
            candidate = "%s-%d" % (name, n)
            n += 1
        self.names.add(candidate)
        return candidate

    def fork(self, base, name, length):
        line = Line(self.unique_name(name), base.head.fork(), base, length)
        line.marks.append(base.tip)
        line.fork_index = len(self.trunk.marks) - 1
        base.children.append(line)
        self.builder.fork_line(line)
        return line

    def fork_release(self, i):
        self.next_release = i + self.gap(self.release_every)
        release = self.fork(self.trunk, "release-1.%d" % len(self.releases), 0)
        self.releases.append(release)
        live = [line for line in self.releases if line.live]
        if len(live) > LIVE_RELEASES:
            live[0].live = False

    def open_topic(self):
        rng = self.rng
        live = [line for line in self.releases if line.live]
        length = math.exp(rng.uniform(0, math.log(LONGEST_TOPIC)))
        if live and rng.random() < HOTFIX_SHARE:
            base = rng.choice(live)
            name = "hotfix/%s-%s" % (base.name.split("-", 1)[1], rng.choice(WORDS))
            length = min(length, 20)
        else:
            base = self.trunk
            name = topic_name(self.rng) or "topic/%s" % rng.choice(WORDS)
        topic = self.fork(base, name, length)
        # A topic works on a few areas, not all over the tree.
        topic.head.focus = [topic.head.any_path(rng) for _ in range(rng.randint(1, 4))]
        self.topics.append(topic)

    def merge_one(self, i):
        """Merges a topic, or a release forward, into its base; False when
        the slot is left for an ordinary commit."""
        rng = self.rng
        forward = [line for line in self.releases if line.forward]
        if forward:
            forward[0].forward = False
            self.merge(self.trunk, forward[0])
            self.next_merge = i + self.gap(self.args.merge_every)
            return True
        ready = [line for line in self.topics if line.own > 0]
        if not ready:
            return False
        topic = max(ready, key=lambda line: line.own / line.length)
        self.topics.remove(topic)
        topic.base.children.remove(topic)
        self.open_topic()
        if rng.random() < ABANDONED:
            self.end(topic, True)
            return False
        self.merge(topic.base, topic)
        if topic.base is not self.trunk:
            topic.base.forward = True
        self.end(topic, rng.random() < KEPT)
        self.next_merge = i + self.gap(self.args.merge_every)
        return True

    def merge(self, into, other):
        catch_up = other is into.base
        if catch_up:
            changes = into.head.catch_up_changes(other.head, other.name)
            into.head.trunk_touched.clear()
        else:
            changes = other.head.merge_changes(into.head, other.name)
            other.head.touched.clear()
            other.head.trunk_touched.clear()
        builder = self.builder
        text = builder.merge_message(builder.merge_title(into, other), changes)
        # What a topic takes from its base is not its own change: merging it
        # back must not offer it again.
        self.record(into, changes, text, other=other, own=not catch_up)
        self.merges += 1

    def end(self, line, keep):
        line.head = None
        if keep:
            self.kept.append(line)
        self.builder.end_line(line, keep)

    def add_big_file(self):
        self.trunk.head.reserved.add(BIG_FILE)
        self.builder.layout.taken.add(BIG_FILE.lower())
        changes = {BIG_FILE: big_file(self.rng, self.args.big_file_lines)}
        self.record(self.trunk, changes, "Add the dispatch table, generated from the handlers")

    def ordinary(self, line, i):
        rng = self.rng
        changes, copies = self.builder.line_changes(line.head)
        if i >= self.next_big_edit and BIG_FILE in line.head.files:
            self.next_big_edit = i + self.gap(self.big_every)
            self.builder.serial += 1
            changes[BIG_FILE] = edited_big_file(
                rng, line.head.files[BIG_FILE], self.builder.serial, self.args.big_file_lines)
        text = self.builder.describe(sorted(changes))
        if i >= self.next_rare_word:
            self.next_rare_word = i + self.gap(self.args.rare_every)
            text = with_rare_word(rng, text)
        user = None
        if i >= self.next_rare_user:
            self.next_rare_user = i + self.gap(self.args.rare_every)
            user = RARE_USER
        self.record(line, changes, text, copies, user=user)

    def record(self, line, changes, text, copies=None, other=None, user=None, own=True):
        line.marks.append(self.builder.commit_on(line, changes, text, copies or {}, other, user))
        head = line.head
        head.apply(changes)
        if line.base is not None and own:
            head.touched.update(changes)
        for child in line.children:
            child.head.trunk_touched.update(changes)
