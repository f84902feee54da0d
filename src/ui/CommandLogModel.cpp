#include "ui/CommandLogModel.h"

#include "model/CommandLogFeed.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QLocale>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QString durationText(qint64 milliseconds)
{
    if (milliseconds < 1000)
        return CommandLogModel::tr("%1 ms").arg(milliseconds);
    return CommandLogModel::tr("%1 s").arg(QLocale().toString(milliseconds / 1000.0, 'f', 1));
}

// The line on one row: breaks and tabs inside quoted arguments shown as escapes.
QString oneLine(QString text)
{
    return text.replace(u'\n', u"\\n"_s).replace(u'\t', u"\\t"_s).replace(u'\r', u"\\r"_s);
}

} // namespace

CommandLogModel::CommandLogModel(CommandLogFeed &feed, QObject *parent)
    : QAbstractTableModel(parent)
{
    add(feed.entries());
    connect(&feed, &CommandLogFeed::entriesAdded, this, &CommandLogModel::add);
    connect(&feed, &CommandLogFeed::cleared, this, [this] {
        beginResetModel();
        m_rows.clear();
        endResetModel();
    });
}

void CommandLogModel::add(const QList<CommandLogEntry> &entries)
{
    const quint64 newest = m_rows.isEmpty() ? 0 : m_rows.first().sequence;
    QList<CommandLogEntry> added;
    for (auto entry = entries.crbegin(); entry != entries.crend(); ++entry) {
        if (entry->sequence > newest)
            added.append(*entry);
    }
    if (added.isEmpty())
        return;
    beginInsertRows(QModelIndex(), 0, int(added.size()) - 1);
    m_rows = added + m_rows;
    endInsertRows();
    if (m_rows.size() > commandLogCapacity) {
        beginRemoveRows(QModelIndex(), int(commandLogCapacity), int(m_rows.size()) - 1);
        m_rows.resize(commandLogCapacity);
        endRemoveRows();
    }
}

int CommandLogModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int CommandLogModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : Column::columns;
}

QString CommandLogModel::statusText(const CommandLogEntry &entry) const
{
    switch (entry.outcome) {
    case CommandOutcome::exited:
        return entry.statusAccepted ? QString::number(entry.status) : tr("Failed (%1)").arg(entry.status);
    case CommandOutcome::crashed:
        return tr("Crashed");
    case CommandOutcome::cancelled:
        return tr("Cancelled");
    case CommandOutcome::notStarted:
        return tr("Not started");
    }
    return QString();
}

QVariant CommandLogModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const CommandLogEntry &entry = m_rows.at(index.row());
    if (role == repeatableTextRole)
        return repeatableCommandText(entry);
    if (role == filterTextRole)
        return entry.directory + u'\n' + commandLineText(entry);
    if (role == Qt::ForegroundRole && index.column() == status && !entry.succeeded())
        return entry.outcome == CommandOutcome::cancelled ? QColor(0x8a, 0x6d, 0x1f) : QColor(0xc6, 0x28, 0x28);
    const QDateTime started = entry.started.toLocalTime();
    if (role == Qt::ToolTipRole) {
        switch (index.column()) {
        case time:
            return QLocale().toString(started, QLocale::LongFormat);
        case repository:
            return QDir::toNativeSeparators(entry.directory);
        case command:
            return commandLineText(entry);
        case status:
            return entry.served ? tr("Answered by a Mercurial command server") : QVariant();
        default:
            return {};
        }
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case time:
        return QLocale().toString(started.time(), u"HH:mm:ss"_s);
    case repository:
        return QFileInfo(entry.directory).fileName();
    case command:
        return oneLine(commandLineText(entry));
    case duration:
        return durationText(entry.durationMilliseconds);
    case status:
        return statusText(entry);
    default:
        return {};
    }
}

QVariant CommandLogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    switch (section) {
    case time:
        return tr("Time");
    case repository:
        return tr("Repository");
    case command:
        return tr("Command");
    case duration:
        return tr("Duration");
    case status:
        return tr("Status");
    default:
        return {};
    }
}

} // namespace tillery
