#include "Checks.h"
#include "FakeTool.h"
#include "ModelHarness.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "model/VersionControl.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace tillery;
using test::failureOf;
using test::ScopedEnvironmentVariable;

namespace {

// A repository with one commit, and a folder of the test's own where a
// payload that gets to run leaves its marker.
struct Scene {
    explicit Scene(RepositoryKind repositoryKind)
        : kind(repositoryKind)
        , repository(test::makeFixture(repositoryKind))
    {
        repository->write(u"a.txt"_s, "a\n");
        repository->commitAll(u"base"_s);
    }

    const VersionControl &backend() const { return versionControl(kind); }
    QString path() const { return repository->path(); }
    QString marker() const { return m_folder.filePath(u"PWNED"_s); }
    QString folder(const QString &name) const { return m_folder.filePath(name); }

    // A script in the test's folder that leaves the marker when it runs.
    QString markingProgram() const
    {
        const QString program = folder(u"marking-program"_s);
        test::writeFile(program, "#!/bin/sh\ntouch '" + marker().toUtf8() + "'\n", true);
        return program;
    }

    RepositoryKind kind;
    std::unique_ptr<test::RepositoryFixture> repository;

private:
    QTemporaryDir m_folder;
};

// What an attack does to a scene; the description of its failure, or
// "(no failure)".
using Attack = std::function<QString(const Scene &)>;

const QString noFailure = u"(no failure)"_s;

// A commit with the message, MARKER in the summary standing for the scene's
// marker; it must be recorded as it was given, as one new history entry.
Attack commitWithMessage(const QString &summary, const QString &description = QString())
{
    return [summary, description](const Scene &scene) {
        const QString text = QString(summary).replace(u"MARKER"_s, scene.marker());
        scene.repository->write(u"a.txt"_s, "changed\n");
        const QString failure = failureOf([&] {
            scene.backend().commit(scene.path(), {{u"a.txt"_s, FileState::modified}}, {text, description, {}});
        });
        const QList<Changeset> history = scene.backend().loadSnapshot(scene.path()).history;
        const QString recorded = history.size() == 2 ? history.first().description : u"a forged history"_s;
        const QString expected = description.isEmpty() ? text : text + u"\n\n"_s + description;
        return failure != noFailure ? failure : recorded == expected ? noFailure : u"committed as "_s + recorded;
    };
}

} // namespace

class HostileInputTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    // Names, nodes and messages that come from a remote, a repository or a
    // person reach hg and git only as values; a repository's own aliases and
    // monitor program never replace what Tillery runs.
    void valuesNeverBecomeCommands_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<Attack>("attack");
        QTest::addColumn<bool>("markerExpected");

        for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
            const char *name = kind == RepositoryKind::mercurial ? "hg" : "git";
            for (const QString &message :
                 {u"--config=alias.commit=!touch MARKER"_s, u"--cwd=/"_s, u"-R/elsewhere"_s, u"--amend"_s,
                  u"-m \"$(touch MARKER)\" `touch MARKER` %s ; | & 'quoted'"_s}) {
                QTest::addRow("%s: commit message %s", name, qPrintable(message))
                    << kind << commitWithMessage(message) << false;
            }
            // The old log format's record and field separators, then a line
            // of the new format's record start, and every control character.
            QString controls;
            for (char16_t character = 1; character < 0x20; ++character) {
                // Mercurial keeps line breaks of its own.
                if (character != u'\n' && (kind == RepositoryKind::git || character != u'\r'))
                    controls += QChar(character);
            }
            const QString forged = u"0123456789abcdef0123456789abcdef01234567"_s;
            QTest::addRow("%s: history forged in a message", name)
                << kind
                << commitWithMessage(u"real"_s, u"x\x1f\n\x1e"_s + forged
                                                    + u"\x1fMallory <m@x>\x1f"
                                                      "0\x1fHEAD -> main\x1f"
                                                      "forged\x1f\n\n/"_s
                                                    + forged + controls + u"\x7f end"_s)
                << false;
        }
        QTest::newRow("hg: the repository's aliases and defaults")
            << RepositoryKind::mercurial << Attack([](const Scene &scene) {
                   scene.repository->write(u".hg/hgrc"_s, "[alias]\nstatus = !touch " + scene.marker().toUtf8()
                                                              + "\nlog = !touch " + scene.marker().toUtf8()
                                                              + "\n[defaults]\nstatus = --clean\n");
                   scene.repository->write(u"b.txt"_s, "new\n");
                   const QList<WorkingFile> files = scene.backend().loadSnapshot(scene.path()).files;
                   return files == QList<WorkingFile>{{u"b.txt"_s, FileState::untracked}} ? noFailure
                                                                                          : u"other files"_s;
               })
            << false;
        QTest::newRow("git: the repository's file-system monitor")
            << RepositoryKind::git << Attack([](const Scene &scene) {
                   scene.repository->tool({u"config"_s, u"core.fsmonitor"_s, scene.markingProgram()});
                   scene.backend().loadSnapshot(scene.path());
                   return noFailure;
               })
            << false;
        QTest::newRow("git: the repository's text conversion, when annotating")
            << RepositoryKind::git << Attack([](const Scene &scene) {
                   scene.repository->tool({u"config"_s, u"diff.shown.textconv"_s, scene.markingProgram()});
                   scene.repository->write(u".gitattributes"_s, "a.txt diff=shown\n");
                   scene.repository->commitAll(u"attributes"_s);
                   const FileAnnotation annotation =
                       scene.backend().annotateFile(scene.path(), std::nullopt, u"a.txt"_s);
                   return annotation.lines.value(0).text == u"a" ? noFailure : u"converted lines"_s;
               })
            << false;
        QTest::newRow("git: the person's own file-system monitor is kept")
            << RepositoryKind::git << Attack([](const Scene &scene) {
                   const QString global = scene.folder(u"gitconfig"_s);
                   QFile::copy(qEnvironmentVariable("GIT_CONFIG_GLOBAL"), global);
                   const ScopedEnvironmentVariable config("GIT_CONFIG_GLOBAL", global.toUtf8());
                   test::runTool(u"git"_s, {u"config"_s, u"--global"_s, u"core.fsmonitor"_s, scene.markingProgram()},
                                 scene.path());
                   scene.backend().loadSnapshot(scene.path());
                   return noFailure;
               })
            << true;
    }

    void valuesNeverBecomeCommands()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(Attack, attack);
        QFETCH(bool, markerExpected);
        const Scene scene(kind);
        QCOMPARE(attack(scene), noFailure);
        QCOMPARE(QFile::exists(scene.marker()), markerExpected);
    }

    // A person's configuration may change everything a tool prints for people;
    // what Tillery reads stays the same.
    void personalConfigurationChangesNothingRead_data() { test::addKindColumn(); }

    void personalConfigurationChangesNothingRead()
    {
        QFETCH(RepositoryKind, kind);
        const Scene scene(kind);
        scene.repository->write(u"caf\u00e9 \u2615.txt"_s, "one\ntwo\n");
        scene.repository->commitAll(u"caf\u00e9\n\nmore words"_s);
        scene.repository->write(u"a.txt"_s, "a\nchanged\n");
        scene.repository->write(u"new.txt"_s, "new\n");
        const auto everythingRead = [&scene] {
            const VersionControl &backend = scene.backend();
            const RepositorySnapshot snapshot = backend.loadSnapshot(scene.path());
            const Changeset newest = snapshot.history.value(0);
            const QList<WorkingFile> changed = backend.changesetFiles(scene.path(), newest);
            return QVariantList{
                QVariant::fromValue(snapshot.files.size()),
                snapshot.branch,
                QStringList{newest.description, newest.author, newest.node},
                backend.workingDiff(scene.path(), {u"a.txt"_s, FileState::modified}, [] { return false; }),
                changed.value(0).path,
                backend.changesetDiff(scene.path(), newest, changed.value(0).path),
                backend.compareDiff(scene.path(), snapshot.branch)};
        };
        const QVariantList plain = everythingRead();
        QCOMPARE(plain.at(4).toString(), u"caf\u00e9 \u2615.txt"_s);

        const QString personal = scene.folder(u"personal"_s);
        const bool hg = kind == RepositoryKind::mercurial;
        // Git's pinned configuration with the person's added; Mercurial's read after the pinned one.
        test::writeFile(personal,
                        hg ? "[alias]\nstatus = status --clean\nlog = log --limit 1 --verbose\n"
                             "diff = diff --reverse\n[defaults]\nstatus = --all\nlog = --limit 1\n"
                             "diff = --reverse\n[ui]\nverbose = True\ntweakdefaults = True\ncolor = always\n"
                             "logtemplate = {rev}\n[commands]\nstatus.relative = True\n"
                             "status.verbose = True\n[diff]\nnoprefix = True\nword-diff = True\n"
                             "nobinary = True\n"
                           : test::readFile(qEnvironmentVariable("GIT_CONFIG_GLOBAL"))
                                 + "[color]\n\tui = always\n\tdiff = always\n[log]\n\tshowSignature = true\n"
                                   "\tdecorate = full\n[status]\n\tshowUntrackedFiles = no\n"
                                   "\trelativePaths = true\n\tshort = true\n[diff]\n\tnoprefix = true\n"
                                   "\tmnemonicPrefix = true\n\texternal = false\n[core]\n\tquotePath = false\n"
                                   "[i18n]\n\tlogOutputEncoding = ISO-8859-1\n[format]\n\tpretty = oneline\n");
        const ScopedEnvironmentVariable configuration(
            hg ? "HGRCPATH" : "GIT_CONFIG_GLOBAL", (hg ? qgetenv("HGRCPATH") + ':' : QByteArray()) + personal.toUtf8());
        QCOMPARE(everythingRead(), plain);
    }

    // Another process holds the repository's lock: the command ends soon with
    // a clear message and the work is still there.
    void lockedRepository_data() { test::addKindColumn(); }

    void lockedRepository()
    {
        QFETCH(RepositoryKind, kind);
        const Scene scene(kind);
        QProcess holder;
        const QString holding = scene.folder(u"holding"_s);
        if (kind == RepositoryKind::mercurial) {
            // A commit of another process that holds the lock while the flag exists.
            QVERIFY(QDir().mkpath(holding));
            scene.repository->write(u"b.txt"_s, "b\n");
            holder.setWorkingDirectory(scene.path());
            holder.start(u"hg"_s,
                         {u"--config"_s, u"hooks.precommit=while [ -e '"_s + holding + u"' ]; do sleep 0.1; done"_s,
                          u"commit"_s, u"-A"_s, u"-m"_s, u"other"_s, u"b.txt"_s});
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(scene.repository->filePath(u".hg/store/lock"_s)).isSymLink(), 20000);
        } else {
            scene.repository->write(u".git/index.lock"_s, "");
        }
        scene.repository->write(u"a.txt"_s, "my work\n");
        const QString failure = failureOf([&] {
            scene.backend().commit(scene.path(), {{u"a.txt"_s, FileState::modified}}, {u"mine"_s, {}, {}});
        });
        QDir().rmdir(holding);
        holder.waitForFinished();
        QVERIFY2(failure.startsWith(u"The repository is locked by another process. Try again when it has finished."_s),
                 qPrintable(failure));
        QCOMPARE(test::readFile(scene.repository->filePath(u"a.txt"_s)), QByteArray("my work\n"));
    }

    // Paths beyond the work: a file a tool reports out of the repository is
    // not moved to the Trash; an empty or relative clone destination, the
    // current folder that a stopped clone would clear, runs nothing.
    void pathsBeyondTheWork()
    {
        const Scene scene(RepositoryKind::git);
        const QString victim = scene.repository->filePath(u"../victim.txt"_s);
        scene.repository->write(u"../victim.txt"_s, "keep me\n");
        const test::FakeTool git(test::running(
            test::interceptedBody(RepositoryKind::git, "status", "printf '?? ../victim.txt\\0'; exit 0")));
        const ScopedEnvironmentVariable override("GIT", git.path().toUtf8());
        test::ModelHarness harness;
        AppModel &model = harness.start();
        for (const QString &destination : {QString(), u" "_s, u"clone"_s, u"/"_s}) {
            model.clone(u"https://example.com/chart.git"_s, destination, RepositoryKind::git);
            QVERIFY2(!model.activityState().isBusy(), qPrintable(destination));
            QCOMPARE(model.activityState().presentedError()->message, u"Choose a folder to clone into."_s);
        }
        QCOMPARE(git.processId(), 0);

        QVERIFY(harness.adopt(*scene.repository));
        QCOMPARE(model.workspace().snapshot().files, (QList<WorkingFile>{{u"../victim.txt"_s, FileState::untracked}}));
        model.selectChangeFiles({model.workspace().snapshot().files.first()});
        harness.prompts.alertAnswers = {0};
        model.discardSelected();
        QVERIFY(harness.settle());
        QCOMPARE(harness.desktop.trashed, QStringList());
        QCOMPARE(test::readFile(victim), QByteArray("keep me\n"));
        QCOMPARE(model.activityState().presentedError()->message,
                 u"“../victim.txt” is not inside the repository; it was not moved to the Trash."_s);
    }
};

QTEST_GUILESS_MAIN(HostileInputTest)
#include "tst_hostile_input.moc"
