#pragma once

#include "model/VersionControl.h"
#include "records/ChosenChanges.h"
#include "records/Repository.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>

class QTestData;

namespace tillery::test {

// Runs a real tool found on PATH (never through the HG/GIT variables that
// the code under test reads) and returns its standard output. Throws
// std::runtime_error, after printing the tool's error text, when it fails.
QByteArray runTool(const QString &program, const QStringList &arguments, const QString &directory);

// A real repository in its own temporary folder.
class RepositoryFixture {
public:
    virtual ~RepositoryFixture() = default;

    QString path() const { return m_folder ? m_folder->path() : m_existingFolder; }
    Repository repository() const { return Repository{path(), kind()}; }
    QString filePath(const QString &relative) const;

    void write(const QString &relative, const QByteArray &contents) const;
    void removeFromDisk(const QString &relative) const;
    // A working file's bytes, or "(missing)".
    QByteArray read(const QString &relative) const;
    // A file as the working copy's parent holds it.
    QByteArray committed(const QString &relative) const;

    virtual RepositoryKind kind() const = 0;
    bool isGit() const { return kind() == RepositoryKind::git; }
    // The kind's backend, and the snapshot it loads of the repository.
    const VersionControl &backend() const { return versionControl(kind()); }
    RepositorySnapshot snapshot() const { return backend().loadSnapshot(path()); }
    // A changed file's working diff as the Changes page shows it, the lines at the given places among
    // its added and removed ones chosen.
    ChosenChanges choose(const QString &relative, const QList<int> &places) const;

    // Commits every change, adding new files and forgetting removed ones;
    // returns the new changeset's full hash.
    virtual QString commitAll(const QString &message) const = 0;
    // Runs hg or git in the repository; its standard output.
    virtual QByteArray tool(const QStringList &arguments) const = 0;
    // The full hash of the working copy's parent.
    virtual QString parentNode() const = 0;

protected:
    // A fresh temporary folder, or the given one when the repository lives inside another.
    explicit RepositoryFixture(const QString &existingFolder = QString());

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_existingFolder;
};

class MercurialFixture final : public RepositoryFixture {
public:
    MercurialFixture();
    // A repository made with "hg init" in an existing folder (for nesting).
    explicit MercurialFixture(const QString &folder);

    QByteArray hg(const QStringList &arguments) const;
    QByteArray tool(const QStringList &arguments) const override { return hg(arguments); }
    RepositoryKind kind() const override { return RepositoryKind::mercurial; }
    QString parentNode() const override { return node(); }
    QString commitAll(const QString &message) const override;
    QString node(const QString &revision = QStringLiteral(".")) const;
    // A bookmark at the revision; at "." it becomes the active one.
    void bookmark(const QString &name, const QString &revision = QStringLiteral(".")) const;
    // Starts a named branch with the next commit.
    void branch(const QString &name) const;
};

class GitFixture final : public RepositoryFixture {
public:
    GitFixture();
    explicit GitFixture(const QString &folder);
    // A bare repository, to serve as a remote.
    static std::unique_ptr<GitFixture> bare();
    // A clone of another repository (a local path).
    static std::unique_ptr<GitFixture> cloneOf(const QString &source);

    QByteArray git(const QStringList &arguments) const;
    QByteArray tool(const QStringList &arguments) const override { return git(arguments); }
    RepositoryKind kind() const override { return RepositoryKind::git; }
    QString parentNode() const override { return head(); }
    QString commitAll(const QString &message) const override;
    QString head() const;
    // A new branch at HEAD, checked out or not.
    void branch(const QString &name, bool checkOut = false) const;
    void checkOut(const QString &branch) const;
    // Appends `count` small commits to a branch in one fast-import run;
    // leaves the working copy alone (check the branch out to see them).
    void importCommits(const QString &branch, int count) const;

private:
    enum class Start { empty, bare, nothing };
    explicit GitFixture(Start start);
};

// For a data-driven test: a "kind" column with a Mercurial and a Git row.
void addKindColumn();
// A row of each kind for a case ("<name>, git"), its kind given, the rest by `fill`.
void addRowsForBothKinds(const char *name, const std::function<void(QTestData &)> &fill);

// A fresh empty repository of the kind.
std::unique_ptr<RepositoryFixture> makeFixture(RepositoryKind kind);
// A repository with a line of `count` changesets, made by the tool in one go.
std::unique_ptr<RepositoryFixture> makeLongHistory(RepositoryKind kind, int count);

// The kind's tool, "hg" or "git", and the environment variable that points the code at a stand-in for it.
QString toolName(RepositoryKind kind);
const char *toolVariable(RepositoryKind kind);

// A stand-in's shell commands: `body` for runs whose arguments include the
// word, the real tool for all others.
QByteArray interceptedBody(RepositoryKind kind, const QByteArray &word, const QByteArray &body);

// Shell commands that wait until the file exists: a stand-in that holds
// until the test lets it go.
QByteArray waitForFile(const QString &path);

} // namespace tillery::test
