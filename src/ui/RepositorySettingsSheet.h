#pragma once

#include "records/Repository.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tillery {

class ProblemLabel;

class AppModel;
class IconWell;

// The selected repository's settings: the default remote (Mercurial
// "default", Git "origin"), shown with its password masked, and the
// picture the sidebar shows for it. A picture takes effect at once; the
// address when saved.
class RepositorySettingsSheet final : public QDialog {
    Q_OBJECT

public:
    explicit RepositorySettingsSheet(AppModel &model, QWidget *parent = nullptr);

    // The remote's name for the kind and its address as shown (password masked).
    static QString shownAddress(const AppModel &model);

    QLineEdit *address() const { return m_address; }
    QPushButton *saveButton() const { return m_save; }
    IconWell *iconWell() const { return m_well; }
    QPushButton *removeIconButton() const { return m_removeIcon; }
    ProblemLabel *iconProblem() const { return m_iconProblem; }
    // What a dropped or chosen file gives the sheet.
    void takePicture(const QString &pictureFile);

private:
    void showIcon();

    AppModel &m_model;
    std::optional<Repository> m_repository;
    QLineEdit *m_address;
    QPushButton *m_save;
    IconWell *m_well;
    QPushButton *m_removeIcon;
    ProblemLabel *m_iconProblem;
};

} // namespace tillery
