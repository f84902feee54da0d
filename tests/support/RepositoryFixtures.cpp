#include "RepositoryFixtures.h"

#include "Checks.h"

#include "diff/FilePatch.h"

#include <QTest>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace tillery::test {

namespace {

void startTool(QProcess &process, const QString &program, const QStringList &arguments, const QString &directory)
{
    const QString executable = QStandardPaths::findExecutable(program);
    if (executable.isEmpty())
        throw std::runtime_error(program.toStdString() + " is not installed");
    process.setWorkingDirectory(directory);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(executable, arguments);
    process.waitForFinished(-1);
}

int runToolForStatus(const QString &program, const QStringList &arguments, const QString &directory)
{
    QProcess process;
    startTool(process, program, arguments, directory);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

QByteArray runTool(const QString &program, const QStringList &arguments, const QString &directory)
{
    QProcess process;
    startTool(process, program, arguments, directory);
    const QByteArray output = process.readAllStandardOutput();
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        const QString command = program + u' ' + arguments.join(u' ');
        qWarning("%s failed in %s: %s %s", qPrintable(command), qPrintable(directory),
                 process.readAllStandardError().constData(), qPrintable(process.errorString()));
        throw std::runtime_error(command.toStdString() + " failed");
    }
    return output;
}

RepositoryFixture::RepositoryFixture(const QString &existingFolder)
    : m_folder(existingFolder.isEmpty() ? std::make_unique<QTemporaryDir>() : nullptr)
    , m_existingFolder(existingFolder)
{
    if (m_folder && !m_folder->isValid())
        throw std::runtime_error("cannot create a temporary folder");
    if (!existingFolder.isEmpty())
        QDir().mkpath(existingFolder);
}

QString RepositoryFixture::filePath(const QString &relative) const
{
    // Not QDir::filePath, which takes a name that begins with ":" for a resource.
    return path() + u'/' + relative;
}

void RepositoryFixture::write(const QString &relative, const QByteArray &contents) const
{
    writeFile(filePath(relative), contents);
}

void RepositoryFixture::removeFromDisk(const QString &relative) const
{
    if (!QFile::remove(filePath(relative)))
        throw std::runtime_error("cannot remove " + relative.toStdString());
}

QByteArray RepositoryFixture::read(const QString &relative) const
{
    return readFile(filePath(relative));
}

QByteArray RepositoryFixture::committed(const QString &relative) const
{
    return tool(isGit() ? QStringList{u"show"_s, u"HEAD:"_s + relative}
                        : QStringList{u"cat"_s, u"--rev=."_s, u"--"_s, u"path:"_s + relative});
}

ChosenChanges RepositoryFixture::choose(const QString &relative, const QList<int> &places) const
{
    WorkingFile file;
    for (const WorkingFile &changed : snapshot().files) {
        if (changed.path == relative)
            file = changed;
    }
    const QString diff = backend().workingDiff(path(), file, [] { return false; });
    QList<qsizetype> ids;
    if (const std::optional<FilePatch> patch = parseFilePatch(diff))
        ids = patch->changedLineIds().values();
    std::sort(ids.begin(), ids.end());
    ChosenChanges chosen{file, diff, {}};
    for (const int place : places)
        chosen.lines.insert(ids.value(place, -1));
    return chosen;
}

MercurialFixture::MercurialFixture()
{
    hg({u"init"_s});
}

MercurialFixture::MercurialFixture(const QString &folder)
    : RepositoryFixture(folder)
{
    hg({u"init"_s});
}

QByteArray MercurialFixture::hg(const QStringList &arguments) const
{
    return runTool(u"hg"_s, arguments, path());
}

QString MercurialFixture::commitAll(const QString &message) const
{
    hg({u"commit"_s, u"--addremove"_s, u"-m"_s, message});
    return node();
}

QString MercurialFixture::node(const QString &revision) const
{
    return QString::fromUtf8(hg({u"log"_s, u"-r"_s, revision, u"-T"_s, u"{node}"_s}));
}

void MercurialFixture::bookmark(const QString &name, const QString &revision) const
{
    if (revision == u".")
        hg({u"bookmark"_s, u"--"_s, name});
    else
        hg({u"bookmark"_s, u"-r"_s, revision, u"--"_s, name});
}

void MercurialFixture::branch(const QString &name) const
{
    hg({u"branch"_s, u"--"_s, name});
}

GitFixture::GitFixture()
    : GitFixture(Start::empty)
{
}

GitFixture::GitFixture(Start start)
{
    if (start == Start::empty)
        git({u"init"_s, u"--quiet"_s});
    else if (start == Start::bare)
        git({u"init"_s, u"--quiet"_s, u"--bare"_s});
}

std::unique_ptr<GitFixture> GitFixture::bare()
{
    return std::unique_ptr<GitFixture>(new GitFixture(Start::bare));
}

std::unique_ptr<GitFixture> GitFixture::cloneOf(const QString &source)
{
    std::unique_ptr<GitFixture> clone(new GitFixture(Start::nothing));
    clone->git({u"clone"_s, u"--quiet"_s, u"--"_s, source, u"."_s});
    return clone;
}

GitFixture::GitFixture(const QString &folder)
    : RepositoryFixture(folder)
{
    git({u"init"_s, u"--quiet"_s});
}

QByteArray GitFixture::git(const QStringList &arguments) const
{
    return runTool(u"git"_s, arguments, path());
}

QString GitFixture::commitAll(const QString &message) const
{
    git({u"add"_s, u"--all"_s});
    git({u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"-m"_s, message});
    return head();
}

QString GitFixture::head() const
{
    return QString::fromUtf8(git({u"rev-parse"_s, u"HEAD"_s})).trimmed();
}

void GitFixture::branch(const QString &name, bool checkOut) const
{
    if (checkOut)
        git({u"checkout"_s, u"--quiet"_s, u"-b"_s, name});
    else
        git({u"branch"_s, u"--"_s, name});
}

void GitFixture::checkOut(const QString &branch) const
{
    git({u"checkout"_s, u"--quiet"_s, branch, u"--"_s});
}

void GitFixture::importCommits(const QString &branch, int count) const
{
    // One fast-import stream; a branch that exists already is continued.
    const QByteArray ref = "refs/heads/" + branch.toUtf8();
    QByteArray stream;
    for (int index = 0; index < count; ++index) {
        const QByteArray number = QByteArray::number(index);
        const QByteArray person = "Tillery Tester <tester@example.com> " + QByteArray::number(1600000000 + index);
        stream += "commit " + ref + "\nauthor " + person + " +0000\ncommitter " + person + " +0000\n";
        stream += "data <<END\nImported commit " + number + "\nEND\n";
        if (index == 0
            && runToolForStatus(u"git"_s, {u"rev-parse"_s, u"--verify"_s, u"--quiet"_s, branch}, path()) == 0)
            stream += "from " + ref + "^0\n";
        stream += "M 100644 inline imported.txt\ndata <<END\nline " + number + "\nEND\n\n";
    }
    write(u".git/import-stream"_s, stream);
    runTool(u"sh"_s, {u"-c"_s, u"git fast-import --quiet < .git/import-stream && rm .git/import-stream"_s}, path());
}

void addKindColumn()
{
    QTest::addColumn<RepositoryKind>("kind");
    QTest::newRow("mercurial") << RepositoryKind::mercurial;
    QTest::newRow("git") << RepositoryKind::git;
}

void addRowsForBothKinds(const char *name, const std::function<void(QTestData &)> &fill)
{
    for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
        QTestData &row = QTest::addRow("%s, %s", name, kind == RepositoryKind::git ? "git" : "mercurial") << kind;
        fill(row);
    }
}

std::unique_ptr<RepositoryFixture> makeFixture(RepositoryKind kind)
{
    if (kind == RepositoryKind::git)
        return std::make_unique<GitFixture>();
    return std::make_unique<MercurialFixture>();
}

std::unique_ptr<RepositoryFixture> makeLongHistory(RepositoryKind kind, int count)
{
    std::unique_ptr<RepositoryFixture> repository = makeFixture(kind);
    if (kind == RepositoryKind::git) {
        auto &git = static_cast<GitFixture &>(*repository);
        git.importCommits(u"main"_s, count);
        git.checkOut(u"main"_s);
    } else {
        repository->tool({u"debugbuilddag"_s, u"+"_s + QString::number(count)});
        repository->tool({u"update"_s, u"--quiet"_s, u"tip"_s});
    }
    return repository;
}

QString toolName(RepositoryKind kind)
{
    return kind == RepositoryKind::git ? u"git"_s : u"hg"_s;
}

const char *toolVariable(RepositoryKind kind)
{
    return kind == RepositoryKind::git ? "GIT" : "HG";
}

QByteArray interceptedBody(RepositoryKind kind, const QByteArray &word, const QByteArray &body)
{
    const QByteArray tool = kind == RepositoryKind::git ? "git" : "hg";
    return "case \" $* \" in *' " + word + " '*) " + body + " ;; esac\nexec " + tool + " \"$@\"";
}

QByteArray waitForFile(const QString &path)
{
    return "while [ ! -e '" + path.toUtf8() + "' ]; do sleep 0.02; done";
}

} // namespace tillery::test
