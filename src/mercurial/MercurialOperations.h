#pragma once

#include "process/ToolRunner.h"
#include "records/Repository.h"

#include <QString>
#include <QStringList>

// Every change Tillery makes to a Mercurial repository. Each runs hg in the
// repository root and blocks until it is done; success is status 0. Names
// that would be read as an option are refused before anything runs, and file
// names that hg would read as a pattern are passed literally.
namespace tillery::mercurial {

// An empty file list commits every change. A blank user name leaves hg's own.
void commit(const QStringList &files, const QString &summary, const QString &description,
            const QString &userName, const QString &repositoryPath);
void add(const QStringList &files, const QString &repositoryPath);
// Restores the files without leaving backup copies.
void discard(const QStringList &files, const QString &repositoryPath);
void discardAll(const QString &repositoryPath);
void shelve(const QString &name, const QString &repositoryPath);
void update(const QString &target, const QString &repositoryPath);
void merge(const QString &target, const QString &repositoryPath);
// Mercurial has no squash merge; this always fails with an explanation.
void squashMerge(const QString &target, const QString &repositoryPath);
void rebase(const QString &destination, const QString &repositoryPath);
void createBookmark(const QString &name, const QString &repositoryPath);
void renameBookmark(const QString &oldName, const QString &newName, const QString &repositoryPath);
void deleteBookmark(const QString &name, const QString &repositoryPath);
// The commands that talk to a remote report progress and can be stopped
// through the control. Pulls without updating the working copy.
void fetch(const QString &repositoryPath, const RunControl &control = {});
void pullAndUpdate(const QString &repositoryPath, const RunControl &control = {});
// Fails also when there is nothing to push.
void push(const QString &repositoryPath, const RunControl &control = {});
void clone(const QString &source, const QString &destination, const RunControl &control = {});
// Makes the folder (and its parents) and a repository in it.
Repository createRepository(const QString &path);
// Sets the default remote; an address that shows the password as "***"
// keeps the password already stored.
void setDefaultRemote(const QString &address, const QString &repositoryPath);

} // namespace tillery::mercurial
