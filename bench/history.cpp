// The History page on big branchy repositories (Git with 200,000 commits,
// Mercurial with 50,000 changesets), driven through the application model
// with the list the window shows beside it: selecting the repository until
// its newest rows are there, each older page until its rows are there (and
// the main thread's longest stall meanwhile), every page to the end, the
// graph of all of them laid out in one go, one viewport painted at the top,
// at row 10,000 and at the end, and a search until its first rows are there;
// the tool's own commands, run directly, beside them. Prints its figures;
// asserts nothing.

#include "Measuring.h"
#include "Offscreen.h"
#include "SilentServices.h"
#include "SnapshotBenchmark.h"

#include "git/CommitLogCache.h"
#include "git/GitParsers.h"
#include "git/GitTool.h"
#include "mercurial/MercurialHistoryPager.h"
#include "mercurial/MercurialTool.h"
#include "model/AppModel.h"
#include "model/HistorySearch.h"
#include "process/ToolRunner.h"
#include "ui/HistoryListView.h"
#include "ui/HistoryModel.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QEventLoop>
#include <QPixmap>
#include <QSettings>
#include <QTemporaryDir>
#include <QTextStream>

#include <future>
#include <numeric>

using namespace Qt::StringLiterals;
using namespace tillery;
using namespace tillery::bench;

namespace {

constexpr int paintRuns = 61;

QTextStream &out()
{
    static QTextStream stream(stdout);
    return stream;
}

void print(const QString &line)
{
    out() << line << '\n';
    out().flush();
}

// Spins the event loop until `done` holds, looking whenever the browser
// signals and every millisecond.
template <typename Done>
void spinUntil(const HistoryBrowser &browser, Done done)
{
    QEventLoop loop;
    QTimer poll;
    const auto check = [&] {
        if (done())
            loop.quit();
    };
    QObject::connect(&poll, &QTimer::timeout, &loop, check);
    QObject::connect(&browser, &HistoryBrowser::reset, &loop, check);
    QObject::connect(&browser, &HistoryBrowser::loadingChanged, &loop, check);
    poll.start(1);
    if (!done())
        loop.exec();
}

QString ratio(double time, double tool, const char *target)
{
    return QString::asprintf("%8.1f ms; the tool directly %8.1f ms; ratio %.2f (target: at most %s)", time, tool,
                             time / tool, target);
}

// What the tool runs for a page of the filter's history: Mercurial asks for
// the changesets below `below` with one more than the page; Git's log
// streams the whole history, and a page (after `skip` records) is there once
// the record after it begins.
struct PageQuery {
    QStringList arguments;
    std::function<bool(const QByteArray &)> enough;
};

PageQuery pageQuery(RepositoryKind kind, const HistoryFilter &filter, std::optional<qint64> below, qsizetype skip)
{
    constexpr int limit = HistoryBrowser::pageSize;
    if (kind == RepositoryKind::mercurial)
        return {MercurialTool::historyPageCommand(mercurial::historyRevset(filter, below), limit + 1).arguments, {}};
    return {GitTool::historyStreamCommand(filter, std::nullopt).arguments,
            [skip](const QByteArray &output) { return git::historyRecordsEnd(output, skip + limit) >= 0; }};
}

class HistoryBenchmark {
public:
    HistoryBenchmark(RepositoryKind kind, const QString &repository, const QString &elsewhere, int runs)
        : m_kind(kind)
        , m_repository{repository, kind}
        , m_elsewhere{elsewhere, RepositoryKind::git}
        , m_runs(runs)
        , m_settings(m_folder.filePath(u"settings.ini"_s), QSettings::IniFormat)
        , m_model({m_settings, m_prompts, m_desktop, m_folder.filePath(u"icons"_s)})
        , m_history(m_model)
        , m_tool(directTool(kind))
    {
        m_list.setModel(&m_history);
        m_list.resize(460, 760);
        m_list.show();
        m_model.start();
    }

    void firstPage();
    void pages();
    void layoutAndPaint();
    void search(const QString &text);

private:
    const HistoryBrowser &browser() const { return m_model.historyBrowser(); }
    void waitUntilIdle();
    double selectAfresh();
    QStringList toolCommand(const QStringList &arguments) const
    {
        return QStringList{m_tool.executable} + m_tool.leadingArguments + arguments;
    }
    struct Pass {
        QList<double> times;
        QList<double> arrivals;
        double longestStall = 0;
    };
    Pass pagesToTheEnd();

    RepositoryKind m_kind;
    Repository m_repository;
    Repository m_elsewhere;
    int m_runs;
    QTemporaryDir m_folder;
    QSettings m_settings;
    SilentPrompts m_prompts;
    SilentDesktop m_desktop;
    AppModel m_model;
    HistoryModel m_history;
    HistoryListView m_list;
    DirectTool m_tool;
};

void HistoryBenchmark::waitUntilIdle()
{
    spinUntil(browser(), [this] { return m_model.isIdle(); });
}

// Selects the repository coming from another one, the history's log not
// cached, and waits until its newest rows are in the list; milliseconds
// from the selection.
double HistoryBenchmark::selectAfresh()
{
    m_model.adoptRepository(m_elsewhere);
    waitUntilIdle();
    git::forgetCommitLogs();
    QElapsedTimer timer;
    timer.start();
    m_model.adoptRepository(m_repository);
    spinUntil(browser(), [this] { return !browser().changesets().isEmpty(); });
    return milliseconds(timer.nsecsElapsed());
}

// From selecting the repository afresh until its newest rows are in the list.
void HistoryBenchmark::firstPage()
{
    const bool git = m_kind == RepositoryKind::git;
    const QStringList query = git ? GitTool::historyCommand().arguments : MercurialTool::historyCommand().arguments;
    QList<double> selections;
    QList<double> direct;
    QList<double> counts;
    for (int run = 0; run <= m_runs; ++run) {
        selections.append(selectAfresh());
        waitUntilIdle();
        direct.append(runDirectly(m_tool, query, m_repository.path));
        if (git)
            counts.append(runDirectly(m_tool, GitTool::commitCountCommand().arguments, m_repository.path));
    }
    const double first = selections.takeFirst();
    print(u"first page visible: selecting the repository until its %1 newest rows are there, median of %2:"_s
              .arg(browser().changesets().size())
              .arg(m_runs));
    print(u"  "_s + ratio(median(selections), median(direct), "1.2")
          + QString::asprintf("; the first selection after start-up %.1f ms", first));
    print(u"  the query: "_s + commandLine(toolCommand(query)));
    if (git) {
        print(QString::asprintf("  the refresh also counts every commit, beside the log (in parallel): %.1f ms for ",
                                median(counts))
              + commandLine(toolCommand(GitTool::commitCountCommand().arguments)));
    }
}

// Loads older pages until none is left; the time of each from asking until
// its rows are in the list. Notes the main thread's time for each arrival:
// a page read ahead is appended within the asking; one still being read
// arrives later, when the browser tells it is no longer loading, appends the
// rows (and the list takes them), then tells it again.
HistoryBenchmark::Pass HistoryBenchmark::pagesToTheEnd()
{
    Pass pass;
    QElapsedTimer arrival;
    qsizetype rowsBefore = 0;
    const QMetaObject::Connection watch = QObject::connect(&browser(), &HistoryBrowser::loadingChanged, [&] {
        if (browser().isLoading())
            return;
        if (browser().changesets().size() == rowsBefore) {
            arrival.start();
        } else if (arrival.isValid()) {
            pass.arrivals.append(milliseconds(arrival.nsecsElapsed()));
            arrival.invalidate();
        }
    });
    const StallProbe probe;
    while (browser().hasMore() && browser().failure().isEmpty()) {
        rowsBefore = browser().changesets().size();
        arrival.invalidate();
        QElapsedTimer timer;
        timer.start();
        m_model.loadOlderHistory();
        if (browser().changesets().size() != rowsBefore)
            pass.arrivals.append(milliseconds(timer.nsecsElapsed()));
        spinUntil(browser(), [this] { return !browser().isLoading(); });
        pass.times.append(milliseconds(timer.nsecsElapsed()));
    }
    pass.longestStall = probe.longest();
    QObject::disconnect(watch);
    if (!browser().failure().isEmpty())
        print(u"  a page failed: "_s + browser().failure());
    return pass;
}

void HistoryBenchmark::pages()
{
    m_model.searchHistory(QString());
    const QList<Changeset> &newest = browser().changesets();
    const PageQuery second = pageQuery(m_kind, {}, newest.last().revision, newest.size());
    QList<double> direct;
    for (int run = 0; run < m_runs; ++run)
        direct.append(runDirectly(m_tool, second.arguments, m_repository.path, second.enough));
    // As a person looking at History: the next page is read ahead while the rows before it are shown.
    m_model.setTab(WorkspaceTab::history);
    const auto startOver = [this] {
        // Leaving a search (a quick one: an id no changeset has) starts the paging over.
        m_model.searchHistory(u"0000000"_s);
        m_model.searchHistory(QString());
    };
    // Page 2 asked for the moment the repository's newest rows are shown, before it could be read ahead.
    QList<double> atOnce;
    for (int run = 0; run < m_runs; ++run) {
        selectAfresh();
        QElapsedTimer timer;
        timer.start();
        m_model.loadOlderHistory();
        spinUntil(browser(), [this] { return !browser().isLoading(); });
        atOnce.append(milliseconds(timer.nsecsElapsed()));
        waitUntilIdle();
    }
    QList<Pass> passes;
    for (int pass = 0; pass < (m_runs + 1) / 2; ++pass) {
        startOver();
        waitUntilIdle();
        passes.append(pagesToTheEnd());
    }
    const qsizetype count = passes.first().times.size() + 1;
    print(u"next page: loading older history until its rows are there, medians of %1 passes through %2 pages:"_s
              .arg(passes.size())
              .arg(count));
    QList<double> all;
    QList<double> arrivals;
    QList<double> stalls;
    double whole = 0;
    for (const Pass &pass : std::as_const(passes)) {
        all += pass.times;
        arrivals += pass.arrivals;
        stalls.append(pass.longestStall);
        whole += std::accumulate(pass.times.cbegin(), pass.times.cend(), 0.0);
    }
    const auto atPage = [&passes](qsizetype page, QList<double> Pass::*figures) {
        QList<double> values;
        for (const Pass &pass : std::as_const(passes)) {
            if (page - 2 < (pass.*figures).size())
                values.append((pass.*figures)[page - 2]);
        }
        return median(values);
    };
    for (const qsizetype page : {2, 10, 100, 200, 400, 800}) {
        if (page <= count)
            print(QString::asprintf("  page %3lld %8.1f ms (target: at most 100); its arrival on the main thread "
                                    "%6.2f ms",
                                    static_cast<long long>(page), atPage(page, &Pass::times),
                                    atPage(page, &Pass::arrivals)));
    }
    print(QString::asprintf("  page 2 asked for the moment the newest rows show (not read ahead yet): %.1f ms, "
                            "median of %d",
                            median(atOnce), m_runs));
    print(QString::asprintf("  page 2's query run directly: %.1f ms, median of %d: ", median(direct), m_runs)
          + commandLine(toolCommand(second.arguments)));
    std::sort(all.begin(), all.end());
    std::sort(arrivals.begin(), arrivals.end());
    print(QString::asprintf("  every page: median %.1f ms, slowest %.1f ms; all %lld pages to the end %.1f s a pass",
                            median(all), all.last(), static_cast<long long>(count), whole / 1000.0 / passes.size()));
    print(QString::asprintf("  a page's arrival on the main thread (rows appended, their lanes, the list told): "
                            "median %.2f ms, slowest %.2f ms",
                            median(arrivals), arrivals.last()));
    print(QString::asprintf("  longest main-thread stall while paging: %.1f ms median of the passes, %.1f ms at most "
                            "(target: at most 16)",
                            median(stalls), *std::max_element(stalls.cbegin(), stalls.cend())));
}

void HistoryBenchmark::layoutAndPaint()
{
    const QList<Changeset> &all = browser().changesets();
    qsizetype merges = 0;
    for (const Changeset &changeset : all)
        merges += changeset.parents.size() > 1;
    HistoryGraphLayout layout;
    const double time = medianMilliseconds(m_runs, [&] {
        layout = HistoryGraphLayout();
        std::async(std::launch::async, [&] { layout.append(all); }).wait();
    });
    qsizetype widest = 0;
    for (qsizetype row = 0; row < layout.graph().rowCount(); ++row)
        widest = std::max<qsizetype>(widest, layout.graph().upperHalf(row).size());
    print(QString::asprintf("graph of all %lld rows (%lld merges, at most %lld lines side by side) laid out in one go "
                            "off the main thread: %.1f ms (target: at most 1000)",
                            static_cast<long long>(all.size()), static_cast<long long>(merges),
                            static_cast<long long>(widest), time));

    QPixmap target(m_list.viewport()->size());
    QStringList paints;
    for (const int row : {0, 10000, static_cast<int>(all.size()) - 1}) {
        if (row >= all.size())
            continue;
        m_list.scrollTo(m_history.index(row), QAbstractItemView::PositionAtTop);
        const double paint = medianMilliseconds(paintRuns, [&] { m_list.viewport()->render(&target); });
        paints.append(QString::asprintf("row %d %.2f ms", row, paint));
    }
    m_list.scrollToTop();
    print(QString::asprintf("one viewport painted (%d x %d), median of %d: ", m_list.viewport()->width(),
                            m_list.viewport()->height(), paintRuns)
          + paints.join(u", "_s) + u" (target: at most 4)"_s);
}

// From typing the search until its first rows are there, against the
// tool's own search for as many.
void HistoryBenchmark::search(const QString &text)
{
    const PageQuery query = pageQuery(m_kind, parseHistorySearch(text), std::nullopt, 0);
    QList<double> searches;
    QList<double> direct;
    for (int run = 0; run < m_runs; ++run) {
        m_model.searchHistory(QString());
        waitUntilIdle();
        QElapsedTimer timer;
        timer.start();
        m_model.searchHistory(text);
        spinUntil(browser(), [this] { return !browser().isLoading(); });
        searches.append(milliseconds(timer.nsecsElapsed()));
        direct.append(runDirectly(m_tool, query.arguments, m_repository.path, query.enough));
    }
    print(u"search %1 until its first %2 rows are there, median of %3:"_s.arg(text)
              .arg(browser().changesets().size())
              .arg(m_runs));
    print(u"  "_s + ratio(median(searches), median(direct), "1.2"));
    print(u"  the search: "_s + commandLine(toolCommand(query.arguments)));
    m_model.searchHistory(QString());
}

} // namespace

int main(int argc, char *argv[])
{
    drawOffscreenUnlessTold();
    QApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"The History page on big branchy repositories."_s);
    parser.addHelpOption();
    const QCommandLineOption fixturesOption(
        u"fixtures"_s, u"Use the repositories make_history_fixtures.sh built in this folder."_s, u"folder"_s);
    const QCommandLineOption smallOption(u"small"_s, u"Generate smaller repositories (a tenth)."_s);
    const QCommandLineOption onlyOption(u"only"_s, u"Only this kind: git or mercurial."_s, u"kind"_s);
    const QCommandLineOption runsOption(u"runs"_s, u"Timed runs of each (default 5)."_s, u"count"_s, u"5"_s);
    parser.addOptions({fixturesOption, smallOption, onlyOption, runsOption});
    parser.process(application);
    const int runs = std::max(1, parser.value(runsOption).toInt());

    QTemporaryDir folder(QDir::tempPath() + u"/tillery-bench-XXXXXX"_s);
    QStringList arguments{parser.isSet(fixturesOption) ? QDir(parser.value(fixturesOption)).absolutePath()
                                                        : folder.filePath(u"fixtures"_s)};
    if (parser.isSet(fixturesOption))
        arguments.append(u"--describe"_s);
    if (parser.isSet(smallOption))
        arguments.append(u"--small"_s);
    if (parser.isSet(onlyOption))
        arguments += QStringList{u"--only"_s, parser.value(onlyOption)};
    if (!parser.isSet(fixturesOption))
        print(u"generating the repositories in "_s + arguments.first());
    const std::optional<QByteArray> described = fixtureScriptOutput(u"make_history_fixtures.sh"_s, arguments);
    if (!described) {
        print(u"make_history_fixtures.sh failed"_s);
        return 1;
    }
    QHash<QString, QString> facts;
    for (const QByteArray &line : described->split('\n')) {
        const qsizetype colon = line.indexOf(": ");
        if (colon > 0)
            facts.insert(QString::fromUtf8(line.first(colon)), QString::fromUtf8(line.sliced(colon + 2)));
    }
    // Where the model goes before each selection: an empty repository.
    const QString elsewhere = folder.filePath(u"elsewhere"_s);
    QDir().mkpath(elsewhere);
    runGit({u"init"_s, u"-q"_s}, elsewhere, {0});

    for (const RepositoryKind kind : {RepositoryKind::git, RepositoryKind::mercurial}) {
        const QString name = kind == RepositoryKind::git ? u"git"_s : u"mercurial"_s;
        const QString repository = facts.value(name + u" repository"_s);
        if (repository.isEmpty())
            continue;
        const QString commits = kind == RepositoryKind::git ? u"commits"_s : u"changesets"_s;
        print(u"\n== %1: %2 %3, %4 merges; load average %5"_s.arg(repository, facts.value(name + u' ' + commits),
                                                                  commits, facts.value(name + u" merges"_s),
                                                                  loadAverage()));
        HistoryBenchmark benchmark(kind, repository, elsewhere, runs);
        benchmark.firstPage();
        benchmark.pages();
        benchmark.layoutAndPaint();
        benchmark.search(facts.value(u"rare word"_s));
        benchmark.search(u"author:\"%1\""_s.arg(facts.value(u"rare author"_s)));
    }
    print(QString::asprintf("\npeak memory: benchmark process %.1f MiB; load average %s", peakResidentMiB(),
                            qPrintable(loadAverage())));
    return 0;
}
