#pragma once

#include "records/WorkingFile.h"

#include <QAbstractListModel>
#include <QList>

namespace tillery {

class AppModel;

// Changed files for a list view: the path to show and the state. Over the
// working copy each row also has the check box that marks it for commit;
// over the selected changeset or shelf the rows are its files. A refresh that brings
// the same files leaves the rows (and so the view's place) alone.
class ChangedFilesModel final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role { StateRole = Qt::UserRole + 1 };
    enum class Source { workingCopy, changeset, shelf };

    ChangedFilesModel(AppModel &model, Source source, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    const QList<WorkingFile> &files() const { return m_files; }
    const WorkingFile &fileAt(int row) const { return m_files[row]; }
    int rowOf(const QString &path) const;

private:
    void showFiles(const QList<WorkingFile> &files);

    AppModel &m_model;
    Source m_source;
    QList<WorkingFile> m_files;
};

} // namespace tillery
