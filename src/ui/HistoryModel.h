#pragma once

#include "model/HistoryGraph.h"
#include "records/Changeset.h"
#include "records/RepositoryKind.h"
#include "ui/ChangesetText.h"

#include <QAbstractListModel>
#include <QDateTime>
#include <QList>
#include <QSet>

#include <functional>

namespace tillery {

class AppModel;

// The selected repository's history for a list view, newest first, as far
// as it has loaded (or a search's matches): the title, the author's name,
// the date relative to the clock, the short hash and the badges of each
// changeset. A refresh that keeps the rows leaves the view's place alone.
class HistoryModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { AuthorRole = Qt::UserRole + 1, DateRole, HashRole };
    using Clock = std::function<QDateTime()>;

    explicit HistoryModel(AppModel &model, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    const Changeset &changesetAt(int row) const { return rows()[row]; }
    int rowOf(const QString &node) const;
    QList<changesetText::Badge> badgesAt(int row) const;
    bool isWorkingParent(int row) const;
    // The lanes beside the rows, row for row; none beside a search's
    // matches, whose lines of descent run through changesets not shown.
    const HistoryGraph *graph() const;

    void setClock(Clock clock);
    // Tells the views that every relative date may read differently now.
    void ageDates();

private:
    void showSnapshot();
    void showRows();
    void showAppended(qsizetype first);

    AppModel &m_model;
    // The browser's rows, read where they are: a copy here would make each
    // page copy every row before it.
    const QList<Changeset> &rows() const;
    qsizetype m_rowCount = 0;
    KindTraits m_traits;
    QSet<QString> m_namesNeedingPush;
    QString m_workingParent;
    Clock m_clock;
};

} // namespace tillery
