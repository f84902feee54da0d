#pragma once

#include "records/Changeset.h"
#include "records/KindTraits.h"

#include <QWidget>

class QLabel;
class QToolButton;

namespace tillery {

class AppModel;
class TextButton;

// The top of a changeset's detail: its summary (and the rest of its
// message), then "Changeset" or "Commit" with the short hash, which copies
// the full one, "Author", "Date" and "Branch".
class ChangesetHeader final : public QWidget {
    Q_OBJECT

public:
    explicit ChangesetHeader(AppModel &model, QWidget *parent = nullptr);

    void showChangeset(const Changeset &changeset, const KindTraits &traits);

    QLabel *summary() const { return m_summary; }
    QLabel *body() const { return m_body; }
    QLabel *hashLabel() const { return m_hashLabel; }
    TextButton *hashButton() const { return m_hash; }
    QToolButton *copyButton() const { return m_copy; }
    QLabel *author() const { return m_author; }
    QLabel *date() const { return m_date; }
    QLabel *branch() const { return m_branch; }

private:
    AppModel &m_model;
    QString m_node;
    QLabel *m_summary;
    QLabel *m_body;
    QLabel *m_hashLabel;
    TextButton *m_hash;
    QToolButton *m_copy;
    QLabel *m_author;
    QLabel *m_date;
    QLabel *m_branch;
};

} // namespace tillery
