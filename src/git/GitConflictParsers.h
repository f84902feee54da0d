#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

namespace tillery::git {

// One index entry of a conflict, as "ls-files -z --unmerged" and
// "--resolve-undo" print them: "<mode> <id> <stage>\t<path>".
struct ConflictEntry {
    QString mode;
    QString id;
    int stage = 0;
    QString path;

    friend bool operator==(const ConflictEntry &, const ConflictEntry &) = default;
};
QList<ConflictEntry> parseConflictEntries(QByteArrayView output);

// The standard input of "update-index -z --index-info" that makes the
// entries the index's again: each file's resolved entry goes first.
QByteArray conflictRestoringIndexInfo(const QList<ConflictEntry> &entries);

// NUL-separated names ("--name-only -z"), those that are not UTF-8 left out.
QStringList parseNames(QByteArrayView output);

// "config --show-scope -z --get-regexp" of the merge-tool settings: whether
// a tool is chosen, and the settings the repository's own configuration
// makes (local or worktree scope), which would choose the program run.
struct MergeToolSettings {
    bool toolChosen = false;
    QStringList repositoryKeys;

    friend bool operator==(const MergeToolSettings &, const MergeToolSettings &) = default;
};
MergeToolSettings parseMergeToolSettings(QByteArrayView output);

} // namespace tillery::git
