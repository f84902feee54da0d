#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tillery::git {

// What a refresh reads about commits: the newest page of the log and the count
// of all commits. Both depend only on where the refs point, so a refresh that
// finds every ref where the last one left it can reuse them; on a large
// repository they cost more than the working-copy status.
struct CommitLogOutputs {
    QByteArray log;
    QByteArray count;
    QString head;
};

// The outputs last read in each repository with the refs they were read at;
// safe to use from any thread. Holds a few repositories, the most recently
// stored ones.
std::optional<CommitLogOutputs> cachedCommitLog(const QString &repositoryPath, const QByteArray &refs);
void storeCommitLog(const QString &repositoryPath, const QByteArray &refs, const CommitLogOutputs &outputs);
void forgetCommitLogs();

} // namespace tillery::git
