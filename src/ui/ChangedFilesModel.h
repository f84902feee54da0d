#pragma once

#include "records/WorkingFile.h"

#include <QAbstractListModel>

namespace tillery {

class AppModel;

// The working copy's changed files for a list view: the path to show, the
// state, and the check box that marks the file for commit.
class ChangedFilesModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { StateRole = Qt::UserRole + 1 };

    explicit ChangedFilesModel(AppModel &model, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    const WorkingFile &fileAt(int row) const;
    int rowOf(const QString &path) const;

private:
    AppModel &m_model;
};

} // namespace tillery
