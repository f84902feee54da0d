#pragma once

#include "records/WorkingFile.h"

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

namespace tillery::mercurial {

// "hg resolve --list": the paths of the lines that start with "R", sorted.
QStringList parseResolvedPaths(QByteArrayView output);

// Adds the unresolved files that status does not list (a file whose conflict
// left the working copy's version is unchanged from the first parent), as
// unresolved, keeping the file browser's order.
void addUnlistedUnresolved(QList<WorkingFile> &files, const QSet<QString> &unresolvedPaths);

// The working-parent query: whether the second line names a parent.
bool hasSecondParent(QByteArrayView output);

// "hg config -Tjson ui.merge merge-tools": whether a tool is chosen, and the
// settings made by a file inside the repository (its own .hg/hgrc and what
// that includes), which would choose the program run. The root is the
// repository's real path, as Mercurial names its files.
struct MergeToolSettings {
    bool toolChosen = false;
    QStringList repositoryKeys;

    friend bool operator==(const MergeToolSettings &, const MergeToolSettings &) = default;
};
MergeToolSettings parseMergeToolSettings(const QByteArray &output, const QString &repositoryRoot);

} // namespace tillery::mercurial
