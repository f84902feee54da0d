#pragma once

#include "git/GitTool.h"
#include "records/Annotation.h"
#include "records/Bookmark.h"
#include "records/Changeset.h"
#include "records/WorkingFile.h"

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery::git {

// "git status --porcelain=v1 -z": records "XY path", a rename or copy
// followed by its source, which is skipped. Sorted in the file browser's order.
QList<WorkingFile> parseStatus(QByteArrayView output);

// One line of the local-branch query.
struct LocalBranchRecord {
    QString name;
    QString hash;
    bool active = false;
    std::optional<QDateTime> date;
    QString upstream;
    QString tracking;

    friend bool operator==(const LocalBranchRecord &, const LocalBranchRecord &) = default;
};
QList<LocalBranchRecord> parseLocalBranches(QByteArrayView output);

// "git config --show-scope --get core.fsmonitor": whether the monitor in force
// is the person's own choice (their global or the system configuration)
// rather than the repository's.
bool personEnablesFilesystemMonitor(QByteArrayView output);

// Non-empty lines of the output, each decoded on its own.
QStringList parseLines(QByteArrayView output);

// With an upstream: whether the tracking text says "ahead" or "gone".
bool trackingNeedsPush(const QString &tracking);

// The remote branch that stands for a branch without an upstream, among full
// ref names ("refs/remotes/<remote>/<branch>", so that a remote of any name
// stays a ref): the one of origin if there is one, otherwise the first whose
// name ends in "/<branch>".
std::optional<QString> remoteCounterpart(const QString &branch, const QStringList &remoteBranches);

// A count printed by rev-list; nothing when it is not an integer.
std::optional<qint64> parseCount(QByteArrayView output);

// "symbolic-ref --short HEAD"; nothing when HEAD names no branch.
std::optional<QString> parseCurrentBranch(QByteArrayView output);

// Active branches first, then by name in the file browser's order.
void sortBranches(QList<Bookmark> &branches);

// "for-each-ref --format=%(objectname)%09%(*objectname)%09%(refname:short)":
// the commit each ref points at (peeled through annotated tags) to its names.
QHash<QString, QStringList> parseRefTargets(QByteArrayView output);

// "git log -z --format=/%H%x00%an <%ae>%x00%at%x00%B --name-only",
// numbered down from the total commit count. A record that is cut short or
// unreadable is dropped but keeps its number. No message can forge a record.
QList<Changeset> parseHistory(QByteArrayView output, qint64 totalCommits,
                              const QHash<QString, QStringList> &branchesByCommit,
                              const QHash<QString, QStringList> &tagsByCommit);

// The branch that origin's HEAD names, as "symbolic-ref --short" prints it.
// Where record number `count` (from 0) of a history output starts, that is
// how many bytes the records before it take; -1 while it has not begun.
qsizetype historyRecordsEnd(QByteArrayView output, qsizetype count);

std::optional<QString> parseOriginHead(QByteArrayView output);

// Where history starts: origin's HEAD, else main, else master, else the
// current branch, else (when detached) the first branch or "main".
QString chooseDefaultBranch(const std::optional<QString> &originHead, const QList<Bookmark> &sortedBranches,
                            const std::optional<QString> &currentBranch);

// "Full Name <address>"; nothing when either part is missing.
std::optional<GitIdentity> parseIdentity(const QString &text);

// "git diff-tree --name-status -z": the files of a commit, sorted.
QList<WorkingFile> parseCommitFiles(QByteArrayView output);

// "git blame --porcelain": each line with its commit, the commit's author
// ("Name <address>") and author time. A line holding a NUL makes the file
// binary (as Git judges it), one that is not UTF-8 makes it not text.
FileAnnotation parseBlame(QByteArrayView output);

// The blob id of each path in "ls-tree -z" output.
QHash<QString, QString> parseTreeBlobs(QByteArrayView output);

// The id git gives a blob of these bytes, in the hash the ids of the
// repository are written in (SHA-1, or SHA-256 for 64-digit ids).
QString blobId(const QByteArray &bytes, qsizetype idLength);

} // namespace tillery::git
