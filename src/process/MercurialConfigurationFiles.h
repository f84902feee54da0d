#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <functional>

namespace tillery {

// The files and folders whose contents make up Mercurial's configuration
// for a repository, as Mercurial looks for them: the entries of HGRCPATH
// when it is set, otherwise the installation's and the system's hgrc and
// hgrc.d and the person's ~/.hgrc and XDG file; then the repository's own
// (a shared repository's source too), and every file these %include.
// `readFile` gives a file's contents (empty when it cannot be read).
QStringList mercurialConfigurationFiles(const QString &executable, const QProcessEnvironment &environment,
                                        const QString &repositoryRoot,
                                        const std::function<QByteArray(const QString &)> &readFile);

// A fingerprint of the files as they are on disk now: it changes whenever
// one of them is written, created, removed or replaced.
QByteArray fileStateFingerprint(const QStringList &paths);

// Both for a repository, read from disk.
QByteArray mercurialConfigurationFingerprint(const QString &executable, const QProcessEnvironment &environment,
                                             const QString &repositoryRoot);

} // namespace tillery
