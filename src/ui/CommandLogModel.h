#pragma once

#include "records/CommandLogEntry.h"

#include <QAbstractTableModel>

namespace tillery {

class CommandLogFeed;

// The Command Log's rows, newest first, kept up to date from the feed.
class CommandLogModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { time, repository, command, duration, status, columns };
    enum Role {
        // The line that repeats the run in a terminal.
        repeatableTextRole = Qt::UserRole,
        // What the filter field is matched against: repository and command.
        filterTextRole,
    };

    explicit CommandLogModel(CommandLogFeed &feed, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    const CommandLogEntry &entry(int row) const { return m_rows.at(row); }

private:
    void add(const QList<CommandLogEntry> &entries);
    QString statusText(const CommandLogEntry &entry) const;

    QList<CommandLogEntry> m_rows;
};

} // namespace tillery
