#include "mercurial/MercurialHistoryPager.h"

#include "mercurial/MercurialFileArguments.h"
#include "mercurial/MercurialParsers.h"
#include "mercurial/MercurialTool.h"

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

class MercurialHistoryPager final : public HistoryPager {
public:
    MercurialHistoryPager(const QString &repositoryPath, const HistoryFilter &filter,
                          std::optional<qint64> belowRevision)
        : m_repositoryPath(repositoryPath)
        , m_filter(filter)
        , m_below(belowRevision)
    {
    }

    HistoryPage next(int limit) override
    {
        if (m_ended || (m_below && *m_below <= 0))
            return HistoryPage{{}, true};
        // One more than asked tells whether anything older is left.
        const ToolCommand command = MercurialTool::historyPageCommand(historyRevset(m_filter, m_below), limit + 1);
        HistoryPage page{parseHistory(runMercurial(command, m_repositoryPath).standardOutput), false};
        m_ended = page.isLast = page.changesets.size() <= limit;
        if (!page.isLast)
            page.changesets.removeLast();
        if (!page.changesets.isEmpty())
            m_below = page.changesets.last().revision;
        return page;
    }

private:
    QString m_repositoryPath;
    HistoryFilter m_filter;
    std::optional<qint64> m_below;
    bool m_ended = false;
};

} // namespace

QString historyRevset(const HistoryFilter &filter, std::optional<qint64> belowRevision)
{
    QStringList parts{belowRevision ? u"reverse(:"_s + QString::number(*belowRevision - 1) + u')'
                                    : u"reverse(all())"_s};
    for (const QString &word : filter.words)
        parts.append(u"keyword("_s + revsetString(word) + u')');
    // Without "literal:" a name could be read as a regular expression.
    for (const QString &author : filter.authors)
        parts.append(u"user("_s + revsetString(u"literal:"_s + author) + u')');
    if (!filter.hashPrefix.isEmpty())
        parts.append(u"id("_s + revsetString(filter.hashPrefix) + u')');
    if (!filter.path.isEmpty())
        parts.append(u"file("_s + revsetString(u"path:"_s + filter.path) + u')');
    return parts.join(u" and "_s);
}

std::unique_ptr<HistoryPager> makeHistoryPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               std::optional<qint64> belowRevision)
{
    return std::make_unique<MercurialHistoryPager>(repositoryPath, filter, belowRevision);
}

} // namespace tillery::mercurial
