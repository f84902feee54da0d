// Paging through history and searching it, asked through the interface the
// model uses, on real repositories of each kind.
#include "RecordPrinting.h"
#include "RepositoryFixtures.h"
#include "TestEnvironment.h"

#include "model/VersionControl.h"

#include <QFile>
#include <QTest>

#include <map>

using namespace Qt::StringLiterals;
using namespace tillery;

Q_DECLARE_METATYPE(tillery::HistoryFilter)

namespace {

struct Commit {
    QString file;
    QString message;
    QString author;
};

// Seven commits, newest last; the fourth by a rare author.
const QList<Commit> commits{
    {u"a.txt"_s, u"Start"_s, {}},
    {u"dir/b.txt"_s, u"Add the Needle"_s, {}},
    {u"a.txt"_s, u"Tidy up"_s, {}},
    {u"c.txt"_s, u"Body words\n\nthe needle again"_s, u"Rare Person <rare@example.com>"_s},
    {u"dir/b.txt"_s, u"Touch b"_s, {}},
    {u"-x"_s, u"Option-like name"_s, {}},
    {u"a.txt"_s, u"End"_s, {}},
};

struct Scene {
    explicit Scene(RepositoryKind kind)
        : backend(versionControl(kind))
        , repository(test::makeFixture(kind))
    {
        for (const Commit &commit : commits) {
            repository->write(commit.file, commit.message.toUtf8() + '\n');
            nodes.prepend(repository->commitAll(commit.message));
            if (!commit.author.isEmpty()) {
                // Rewrite the author of the commit just made.
                repository->tool(kind == RepositoryKind::git
                                     ? QStringList{u"commit"_s, u"--quiet"_s, u"--amend"_s, u"--no-edit"_s,
                                                   u"--author="_s + commit.author}
                                     : QStringList{u"commit"_s, u"--amend"_s, u"--user="_s + commit.author,
                                                   u"--message="_s + commit.message});
                nodes.first() = repository->parentNode();
            }
        }
        repository->tool(kind == RepositoryKind::git ? QStringList{u"branch"_s, u"mark"_s, nodes[5]}
                                                     : QStringList{u"bookmark"_s, u"--rev="_s + nodes[5], u"mark"_s});
    }

    // Every page of a pager, each no longer than `limit`.
    QList<Changeset> allPages(HistoryPager &pager, int limit) const
    {
        QList<Changeset> all;
        for (int guard = 0; guard < 20; ++guard) {
            const HistoryPage page = pager.next(limit);
            [&] { QVERIFY(page.changesets.size() <= limit); }();
            all += page.changesets;
            if (page.isLast)
                return all;
        }
        return all;
    }

    QStringList found(const HistoryFilter &filter) const
    {
        const auto pager = backend.historyPager(repository->path(), filter, std::nullopt, 0);
        QStringList summaries;
        for (const Changeset &changeset : allPages(*pager, 2))
            summaries.append(changeset.summary);
        return summaries;
    }

    const VersionControl &backend;
    std::unique_ptr<test::RepositoryFixture> repository;
    QStringList nodes; // newest first
};

// One scene of each kind serves every row: they only read.
const Scene &sceneOf(RepositoryKind kind)
{
    static std::map<RepositoryKind, std::unique_ptr<Scene>> scenes;
    std::unique_ptr<Scene> &scene = scenes[kind];
    if (!scene)
        scene = std::make_unique<Scene>(kind);
    return *scene;
}

} // namespace

class HistoryPagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { test::pinTestEnvironment(); }

    void pagesAfterTheSnapshot_data() { test::addKindColumn(); }
    void pagesAfterTheSnapshot()
    {
        QFETCH(RepositoryKind, kind);
        const Scene &scene = sceneOf(kind);
        const QList<Changeset> snapshot = scene.backend.loadSnapshot(scene.repository->path()).history;
        QCOMPARE(snapshot.size(), commits.size());
        const auto pager = scene.backend.historyPager(scene.repository->path(), {}, snapshot[2], 3);
        // The pages go on where the snapshot's changesets end, numbered alike.
        QCOMPARE(scene.allPages(*pager, 2), snapshot.mid(3));
        QVERIFY(pager->next(2).isLast);
    }

    void search_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<HistoryFilter>("filter");
        QTest::addColumn<QStringList>("expected");
        const QList<std::pair<const char *, RepositoryKind>> kinds{{"hg", RepositoryKind::mercurial},
                                                                   {"git", RepositoryKind::git}};
        const QStringList bothNeedles{u"Body words"_s, u"Add the Needle"_s};
        for (const auto &[name, kind] : kinds) {
            const auto row = [&](const char *label, HistoryFilter filter, QStringList expected) {
                QTest::addRow("%s: %s", name, label) << kind << filter << expected;
            };
            row("word, any case, in the body too", {{u"NEEDLE"_s}, {}, {}, {}, false}, bothNeedles);
            row("every word", {{u"needle"_s, u"again"_s}, {}, {}, {}, false}, {u"Body words"_s});
            row("author", {{}, {u"rare@"_s}, {}, {}, false}, {u"Body words"_s});
            row("word and author", {{u"needle"_s}, {u"nobody"_s}, {}, {}, false}, {});
            row("path", {{}, {}, {}, u"dir/b.txt"_s, false}, {u"Touch b"_s, u"Add the Needle"_s});
            row("folder", {{}, {}, {}, u"dir"_s, false}, {u"Touch b"_s, u"Add the Needle"_s});
            row("option-like path", {{}, {}, {}, u"-x"_s, false}, {u"Option-like name"_s});
            row("pattern-like path", {{}, {}, {}, u"re:.*"_s, false}, {});
            row("glob-like path", {{}, {}, {}, u"*.txt"_s, false}, {});
            row("regular expression author", {{}, {u".*"_s}, {}, {}, false}, {});
            row("revset-like word", {{u"') or all() or ('"_s}, {}, {}, {}, false}, {});
            row("option-like word", {{u"--output=pwned"_s}, {}, {}, {}, false}, {});
            row("unknown hash", {{}, {}, u"0123456789abc"_s, {}, false}, {});
        }
    }
    void search()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(HistoryFilter, filter);
        QFETCH(QStringList, expected);
        const Scene &scene = sceneOf(kind);
        QCOMPARE(scene.found(filter), expected);
        QVERIFY(!QFile::exists(scene.repository->filePath(u"pwned"_s)));
    }

    // Going to a changeset by name: the name is only ever looked up as one.
    void namedChangesets_data()
    {
        QTest::addColumn<RepositoryKind>("kind");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("expected");
        for (const RepositoryKind kind : {RepositoryKind::mercurial, RepositoryKind::git}) {
            const auto row = [&](const char *label, const QString &name, int expected) {
                QTest::addRow("%s: %s", kind == RepositoryKind::git ? "git" : "hg", label) << kind << name << expected;
            };
            row("hash start", sceneOf(kind).nodes[3].first(10), 3);
            row("bookmark or branch", u"mark"_s, 5);
            row("unknown", u"nothing-here"_s, -1);
            row("option-like", u"--output=pwned"_s, -1);
            row("expression-like", u"') or all() or ('"_s, -1);
            row("range-like", u"0:tip"_s, -1);
        }
    }
    void namedChangesets()
    {
        QFETCH(RepositoryKind, kind);
        QFETCH(QString, name);
        QFETCH(int, expected);
        const Scene &scene = sceneOf(kind);
        const std::optional<QString> node = scene.backend.resolveChangeset(scene.repository->path(), name);
        QCOMPARE(node, expected < 0 ? std::nullopt : std::optional(scene.nodes[expected]));
        QVERIFY(!QFile::exists(scene.repository->filePath(u"pwned"_s)));
    }

    void hashPrefix_data() { test::addKindColumn(); }
    void hashPrefix()
    {
        QFETCH(RepositoryKind, kind);
        const Scene &scene = sceneOf(kind);
        HistoryFilter filter;
        filter.hashPrefix = scene.nodes[3].first(10);
        QCOMPARE(scene.found(filter), QStringList{u"Body words"_s});
    }
};

QTEST_GUILESS_MAIN(HistoryPagesTest)
#include "tst_history_pages.moc"
