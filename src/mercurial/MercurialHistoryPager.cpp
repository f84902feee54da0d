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
        const bool following = m_filter.followsRenames && !m_filter.path.isEmpty();
        const ToolCommand command =
            MercurialTool::historyPageCommand(historyRevset(m_filter, m_below), limit + 1, following);
        const QByteArray output = runMercurial(command, m_repositoryPath).standardOutput;
        HistoryPage page{parseHistory(output), false};
        if (following)
            nameFollowedFile(page.changesets, parseFileCopies(output));
        m_ended = page.isLast = page.changesets.size() <= limit;
        if (!page.isLast)
            page.changesets.removeLast();
        if (!page.changesets.isEmpty())
            m_below = page.changesets.last().revision;
        return page;
    }

private:
    // Each changeset's files become the one name the file had in it: the
    // name it is renamed to where it was renamed, the older one below.
    void nameFollowedFile(QList<Changeset> &changesets, const QList<QHash<QString, QString>> &copies)
    {
        if (m_followedName.isEmpty())
            m_followedName = m_filter.path;
        for (qsizetype index = 0; index < changesets.size(); ++index) {
            changesets[index].files = {m_followedName};
            m_followedName = copies.value(index).value(m_followedName, m_followedName);
        }
    }

    QString m_repositoryPath;
    HistoryFilter m_filter;
    QString m_followedName;
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
    const QString path = revsetString(u"path:"_s + filter.path);
    // follow() walks the file back through copies and renames, from the working copy's parent.
    if (!filter.path.isEmpty())
        parts.append(filter.followsRenames ? u"(file("_s + path + u") or follow("_s + path + u"))"_s
                                           : u"file("_s + path + u')');
    return parts.join(u" and "_s);
}

std::unique_ptr<HistoryPager> makeHistoryPager(const QString &repositoryPath, const HistoryFilter &filter,
                                               std::optional<qint64> belowRevision)
{
    return std::make_unique<MercurialHistoryPager>(repositoryPath, filter, belowRevision);
}

} // namespace tillery::mercurial
