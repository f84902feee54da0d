#pragma once

#include "records/RepositoryKind.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tillery {

class AppModel;

// "Clone a Repository": the address, the destination folder and the kind,
// guessed from the address until the person picks one.
class CloneSheet final : public QDialog {
    Q_OBJECT

public:
    explicit CloneSheet(AppModel &model, QWidget *parent = nullptr);

    static RepositoryKind guessKind(const QString &address);
    // The folder name a clone of the address gets: its last part, less ".git".
    static QString folderName(const QString &address);

    QLineEdit *source() const { return m_source; }
    QLineEdit *parentFolder() const { return m_parent; }
    QLineEdit *name() const { return m_name; }
    QComboBox *kind() const { return m_kind; }
    QPushButton *cloneButton() const { return m_clone; }

private:
    void update();

    AppModel &m_model;
    QLineEdit *m_source;
    QLineEdit *m_parent;
    QLineEdit *m_name;
    QComboBox *m_kind;
    QPushButton *m_clone;
    bool m_kindChosen = false;
    bool m_nameEdited = false;
};

// "Create a Bookmark" (or a Git branch) at the current changeset or commit.
class CreateBookmarkSheet final : public QDialog {
    Q_OBJECT

public:
    explicit CreateBookmarkSheet(AppModel &model, QWidget *parent = nullptr);

    // Why the name cannot be used; empty when it can.
    static QString nameProblem(const QString &name);

    QLineEdit *name() const { return m_name; }
    QPushButton *createButton() const { return m_create; }

private:
    QLineEdit *m_name;
    QLabel *m_problem;
    QPushButton *m_create;
};

// The repository's default remote address.
class RepositorySettingsSheet final : public QDialog {
    Q_OBJECT

public:
    explicit RepositorySettingsSheet(AppModel &model, QWidget *parent = nullptr);

    QLineEdit *address() const { return m_address; }

private:
    QLineEdit *m_address;
};

class AboutSheet final : public QDialog {
    Q_OBJECT

public:
    explicit AboutSheet(QWidget *parent = nullptr);
};

} // namespace tillery
