#pragma once

#include "records/Shelf.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>

#include <functional>

namespace tillery {

class AppModel;

// The snapshot's shelves or stash entries for a list view: the title to
// show, and how long ago each was made.
class ShelfListModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { AgeRole = Qt::UserRole + 1 };
    using Clock = std::function<QDateTime()>;

    explicit ShelfListModel(AppModel &model, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    const Shelf &shelfAt(int row) const { return m_shelves[row]; }
    int rowOf(const QString &id) const;
    void setClock(Clock clock) { m_clock = std::move(clock); }

private:
    AppModel &m_model;
    QList<Shelf> m_shelves;
    Clock m_clock = [] { return QDateTime::currentDateTimeUtc(); };
};

} // namespace tillery
