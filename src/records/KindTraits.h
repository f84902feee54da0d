#pragma once

#include "records/RepositoryKind.h"

#include <QString>

namespace tillery {

// What differs between the kinds besides the tool work: the words the views
// use and the commands a kind offers. Each backend describes itself with one,
// its words translated into the language shown when it is asked.
struct KindTraits {
    RepositoryKind kind = RepositoryKind::mercurial;
    QString toolName; // "Mercurial"
    QString changeset; // "changeset" or "commit"
    QString changesets; // "changesets" or "commits"
    QString bookmark; // "bookmark" or "branch"
    QString bookmarks; // "bookmarks" or "branches"
    // The remote that Pull and Push use, and what the tool calls it.
    QString remoteName; // "default" or "origin"
    QString remoteNoun; // "path" or "remote"
    QString remoteAddressExample;
    // The create-bookmark sheet's explanation and note.
    QString newBookmarkExplanation;
    QString newBookmarkNote;
    // The named branch changesets are on unless they say otherwise; empty
    // where the kind has no named branches.
    QString defaultNamedBranch;
    bool hasSquashMerge = false;
    // "shelf" / "shelves", or "stash" / "stashes".
    QString shelf;
    QString shelves;
};

// "Changeset" for "changeset".
QString capitalized(const QString &word);

// The Mercurial or the Git text: for a sentence whose grammar changes with
// the kind's word, so that each is translated whole.
QString byKind(RepositoryKind kind, const QString &mercurial, const QString &git);

} // namespace tillery
