#include "ui/HistoryModel.h"

#include "model/AppModel.h"
#include "ui/RelativeDate.h"
#include "ui/ShownText.h"

using namespace Qt::StringLiterals;

namespace tillery {

HistoryModel::HistoryModel(AppModel &model, QObject *parent)
    : QAbstractListModel(parent)
    , m_model(model)
    , m_clock([] { return QDateTime::currentDateTimeUtc(); })
{
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &HistoryModel::showSnapshot);
    connect(&model.historyBrowser(), &HistoryBrowser::reset, this, &HistoryModel::showRows);
    connect(&model.historyBrowser(), &HistoryBrowser::appended, this, &HistoryModel::showAppended);
    showRows();
}

// The badges and the working copy's mark follow each refresh, even when the
// rows stay.
void HistoryModel::showSnapshot()
{
    const RepositorySnapshot &snapshot = m_model.workspace().snapshot();
    const QSet<QString> needingPush = changesetText::namesNeedingPush(snapshot.bookmarks);
    if (needingPush == m_namesNeedingPush && snapshot.workingParent == m_workingParent)
        return;
    m_namesNeedingPush = needingPush;
    m_workingParent = snapshot.workingParent;
    if (m_rowCount > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

void HistoryModel::showRows()
{
    beginResetModel();
    m_rowCount = rows().size();
    m_traits = m_model.traits();
    m_namesNeedingPush = changesetText::namesNeedingPush(m_model.workspace().snapshot().bookmarks);
    m_workingParent = m_model.workspace().snapshot().workingParent;
    endResetModel();
}

void HistoryModel::showAppended(qsizetype first)
{
    beginInsertRows(QModelIndex(), int(first), int(rows().size() - 1));
    m_rowCount = rows().size();
    endInsertRows();
}

const QList<Changeset> &HistoryModel::rows() const
{
    return m_model.historyBrowser().changesets();
}

const HistoryGraph *HistoryModel::graph() const
{
    const HistoryBrowser &browser = m_model.historyBrowser();
    return browser.filter().isEmpty() ? &browser.graph() : nullptr;
}

int HistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rowCount);
}

int HistoryModel::rowOf(const QString &node) const
{
    const qsizetype row = m_model.historyBrowser().rowOf(node);
    return row < m_rowCount ? int(row) : -1;
}

bool HistoryModel::isWorkingParent(int row) const
{
    return !m_workingParent.isEmpty() && rows()[row].node == m_workingParent;
}

QList<changesetText::Badge> HistoryModel::badgesAt(int row) const
{
    return changesetText::badges(rows()[row], m_traits, m_namesNeedingPush);
}

QVariant HistoryModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return QVariant();
    const Changeset &changeset = rows()[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        return changesetText::title(changeset, m_traits);
    case Qt::ToolTipRole:
        return plainToolTip(changeset.description.isEmpty() ? changesetText::title(changeset, m_traits)
                                                            : changeset.description);
    case Qt::AccessibleTextRole:
        return changesetText::title(changeset, m_traits) + u", "_s + changesetText::authorName(changeset.author)
               + u", "_s + relativeDateText(changeset.date, m_clock());
    case AuthorRole:
        return changesetText::authorName(changeset.author);
    case DateRole:
        return relativeDateText(changeset.date, m_clock());
    case HashRole:
        return changesetText::shortHash(changeset.node);
    default:
        return QVariant();
    }
}

void HistoryModel::setClock(Clock clock)
{
    m_clock = std::move(clock);
    ageDates();
}

void HistoryModel::ageDates()
{
    if (m_rowCount > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {DateRole, Qt::AccessibleTextRole});
}

} // namespace tillery
