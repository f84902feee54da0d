#!/usr/bin/python3
"""Build a large Git repository for the snapshot-loading benchmark.

The whole history goes through a single `git fast-import` process fed on
stdin: commits on main, branches forked along the way (some with commits of
their own, a few merged back), annotated and lightweight tags and, with
--remote, remote-tracking branches and upstream settings. The working tree is
then checked out on main and made dirty (modified, deleted, staged new,
renamed and untracked files).

With --merge-every the history is branchy instead: many topic and release
branches alive at once, merging back (see BranchyHistory), with a rare word,
a rare author and one long file for annotate.

Only the standard library is needed; git must be on PATH:

    python3 bench/make_git_fixture.py /tmp/git-fixture
    python3 bench/make_git_fixture.py /tmp/git-long --commits 200000 --files 5000
    python3 bench/make_git_fixture.py /tmp/git-history --commits 200000 --files 5000 \
        --merge-every 50 --changes 0
"""

import hashlib
import os
import random
import shutil
import subprocess
import sys
import time

sys.dont_write_bytecode = True  # no __pycache__ in the source tree
sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
from fixture_content import (  # noqa: E402
    BODY_LINES, IGNORED_FILES, USERS, WORDS, BranchyHistory, Head, HistoryBuilder, Line,
    add_branchy_options, check_branchy_options, check_destination, fill, initial_content,
    local_edit, parse_arguments, pick_user, topic_name, untracked_files,
)


MAINTAINER = USERS[0]

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


def git_identity(user):
    name = user[0]
    if "<" in name:
        return name
    # Git wants an address; make up the one an unconfigured machine would use.
    return "%s <%s@build-07.local>" % (name, name)


def signature(user, when):
    """An author, committer or tagger as fast-import reads it."""
    minutes = user[2]
    zone = "%s%02d%02d" % ("-" if minutes < 0 else "+", abs(minutes) // 60, abs(minutes) % 60)
    return ("%s %d %s" % (git_identity(user), when, zone)).encode()


def trailer(rng):
    user = git_identity(rng.choice(USERS))
    return rng.choice(TRAILERS).format(u=user)


def fi_path(path):
    """A path as fast-import reads it; quoted only when it has to be."""
    if path.startswith('"') or "\n" in path or "\\" in path:
        escaped = path.replace("\\", "\\\\").replace('"', '\\"').replace("\n", "\\n")
        return ('"%s"' % escaped).encode()
    return path.encode()


def data_block(payload):
    return b"data %d\n%s\n" % (len(payload), payload)


class Branch:
    def __init__(self, name, fork_index):
        self.name = name
        self.fork_index = fork_index  # position on main's first-parent chain
        self.marks = []  # fork point, then the branch's own commits
        self.head = None  # only while commits or a merge are still to come
        self.pending = 0
        self.merge_back = False


class Builder(HistoryBuilder):
    def __init__(self, out, rng, args):
        super().__init__(rng, args.files, args.commits, trailer)
        self.out = out
        self.args = args
        self.author_when = 0
        self.dates = [0]  # committer time, by mark
        self.main = None
        self.main_marks = []  # first-parent chain of main
        self.branches = []
        self.merging = []  # branches that will be merged and are not yet
        self.merges = 0
        self.tag_counts = (0, 0)
        self.remote_refs = 0
        self.blobs = set()  # ids of the blobs sent so far

    def emit(self, *chunks):
        self.out.write(b"".join(chunks))

    def identities(self, author=None):
        rng = self.rng
        author = author or pick_user(rng)
        committer = author
        if author is not MAINTAINER and rng.random() < 0.2:
            committer = MAINTAINER
        # Committer dates rise with every commit; author dates rise too but may
        # lag a little behind, as with rebased or applied patches.
        self.next_date()
        lag = int(self.step * rng.uniform(0, 0.5)) if committer is not author else 0
        self.author_when = max(self.author_when + 1, self.when - lag)
        return (
            b"author %s\n" % signature(author, self.author_when),
            b"committer %s\n" % signature(committer, self.when),
        )

    def commit(self, ref, changes, text, parent=None, merge=None, user=None):
        """changes: path -> bytes, or None to delete the file."""
        mark = len(self.dates)
        author, committer = self.identities(user)
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
                chunks.append(self.file_change(mode, p, data))
        chunks.append(b"\n")
        self.emit(*chunks)
        return mark

    def file_change(self, mode, path, data):
        """An M command. Contents fast-import already has (a merge's, a
        rename's) are named by their id instead of being sent again."""
        blob = hashlib.sha1(b"blob %d\0" % len(data))
        blob.update(data)
        oid = blob.digest()
        if oid in self.blobs:
            return b"M %s %s %s\n" % (mode, oid.hex().encode(), fi_path(path))
        self.blobs.add(oid)
        return b"M %s inline %s\n%s" % (mode, fi_path(path), data_block(data))

    def build_history(self):
        args = self.args
        files = {}
        for changes, text in self.initial_import(
                args.files, args.commits, ".gitignore", GITIGNORE, "Import %d files"):
            files.update(changes)
            self.main_marks.append(self.commit("main", changes, text))
        self.main = Head(files, ".gitignore")

        first = len(self.main_marks)
        if args.merge_every:
            self.build_branchy_history(first)
            return
        forks, plan = self.branch_plan(first, args.commits)
        for i in range(first, args.commits):
            if i in forks:
                self.fork(forks[i])
            action = plan.get(i)
            if action is None:
                self.main_commit()
            else:
                action()

    def build_branchy_history(self, first):
        trunk = Line("main", self.main)
        trunk.marks = self.main_marks
        history = BranchyHistory(self, self.args, self.args.commits)
        history.run(trunk, first)
        self.branches = history.refs()
        self.merges = history.merges

    def commit_on(self, line, changes, text, copies, other, user):
        merge = other.tip if other is not None else None
        return self.commit(line.name, changes, text, parent=line.tip, merge=merge, user=user)

    def fork_line(self, line):
        self.emit(b"reset refs/heads/%s\nfrom :%d\n\n" % (line.name.encode(), line.tip))

    def end_line(self, line, keep):
        if not keep:
            self.emit(b"reset refs/heads/%s\nfrom %s\n\n" % (line.name.encode(), b"0" * 40))

    def merge_title(self, into, other):
        if into.name == "main":
            return "Merge branch '%s'" % other.name
        return "Merge branch '%s' into %s" % (other.name, into.name)

    def branch_names(self, count):
        rng = self.rng
        names = []
        seen = set()
        # Handed out in this order, so that release-1.9 comes before 1.10.
        fixed = ["release-1.2", "wip", "release-1.9", "old-experiment", "release-1.10",
                 "dev", "release-1.11", "hotfix/startup-crash", "release-2.0"]
        while len(names) < count:
            name = topic_name(rng)
            if name is None:
                name = fixed.pop(0) if fixed else "topic/%s-%d" % (rng.choice(WORDS), len(names))
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
            branch.head = Head(self.main.files, ".gitignore")
        if branch.merge_back:
            self.merging.append(branch)

    def finish(self, branch):
        branch.pending -= 1
        if branch.pending == 0:
            branch.head = None
            if branch in self.merging:
                self.merging.remove(branch)

    def changes_for(self, head):
        changes, rename = self.random_changes(head, self.file_cap)
        if rename:
            src, dst = rename
            changes[src] = None
            changes[dst] = head.files[src]
        return changes

    def main_commit(self):
        changes = self.changes_for(self.main)
        text = self.describe(sorted(changes))
        self.main_marks.append(self.commit("main", changes, text))
        self.main.apply(changes)
        for branch in self.merging:
            branch.head.trunk_touched.update(changes)

    def side_commit(self, branch):
        head = branch.head
        changes = self.changes_for(head)
        text = self.describe(sorted(changes))
        branch.marks.append(self.commit(branch.name, changes, text, parent=branch.marks[-1]))
        head.apply(changes)
        head.touched.update(changes)
        self.finish(branch)

    def merge(self, branch):
        changes = branch.head.merge_changes(self.main, branch.name)
        text = self.merge_message("Merge branch '%s'" % branch.name, changes)
        self.main_marks.append(self.commit("main", changes, text, merge=branch.marks[-1]))
        self.main.apply(changes)
        self.merges += 1
        self.finish(branch)
        for b in self.merging:
            b.head.trunk_touched.update(changes)

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
                tagger = pick_user(rng)
                when = self.dates[mark] + rng.randint(60, 86400)
                message = "Release %s" % name if name.startswith("v") else "Mark %s" % name
                if rng.random() < 0.4:
                    message += "\n\n" + "\n".join(
                        "- " + fill(rng, rng.choice(BODY_LINES)) for _ in range(rng.randint(1, 4))
                    )
                self.emit(
                    b"tag %s\nfrom :%d\n" % (name.encode(), mark),
                    b"tagger %s\n" % signature(tagger, when),
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
            f.write(local_edit(rng))
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
        dst = layout.moved_path(src)
        os.makedirs(os.path.dirname(full(dst)), exist_ok=True)
        os.rename(full(src), full(dst))
        index_paths += [src, dst]
    if index_paths:
        git(dest, "update-index", "--add", "--remove", "-z", "--stdin",
            stdin=b"".join(p.encode() + b"\0" for p in index_paths))

    for p, data in untracked_files(rng, layout, n_unk):
        write(p, data)
    for p in IGNORED_FILES:
        write(p, b"ignored\n")
    return n_mod, n_del, n_add, n_mv, n_unk


def add_options(parser):
    parser.add_argument("--commits", type=int, default=5000)
    parser.add_argument("--branch-every", type=int,
                        help="fork a branch every N commits (0: no branches; default 200)")
    parser.add_argument("--tags", type=int, default=40)
    parser.add_argument("--changes", type=int, default=3200, help="working-copy changes")
    parser.add_argument("--remote", action="store_true",
                        help="add an origin remote with remote-tracking branches and upstreams")
    parser.add_argument("--commit-graph", action="store_true",
                        help="write a commit-graph file for all refs at the end")
    add_branchy_options(parser)


def main():
    parser, args = parse_arguments("Git", add_options)
    if args.commits < 1:
        parser.error("--commits must be at least 1")
    check_branchy_options(parser, args, [("branch_every", "--branch-every")])
    if args.branch_every is None:
        args.branch_every = 200
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

    # Branchy histories commit to many branches in turn; fast-import keeps
    # only a few branches' trees in memory unless told otherwise.
    active = ["--active-branches=%d" % (args.parallel_branches + 16)] if args.merge_every else []
    importer = subprocess.Popen(
        ["git", "-C", dest, *IDENTITY, "fast-import", "--quiet", "--done", *active],
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
    if args.commit_graph:
        git(dest, "commit-graph", "write", "--reachable")

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
