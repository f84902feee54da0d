#pragma once

#include <QObject>
#include <QString>

namespace tillery {

struct ActionContext;
class HistoryBrowser;

// Where the History page goes at a person's request: a search typed into its
// field, a file's history, a changeset named by hash or tag; and keeping the
// selected changeset shown when a refresh or leaving a search starts the
// rows over without it.
class HistoryNavigation final : public QObject {
    Q_OBJECT

public:
    HistoryNavigation(const ActionContext &context, HistoryBrowser &browser, QObject *parent = nullptr);

    // What the search field shows; empty for the whole history.
    const QString &searchText() const { return m_searchText; }

    void search(const QString &text);
    // The changesets that touched the file (following its renames where the
    // tool can), with the file selected in each.
    void showFileHistory(const QString &path);
    // Asks for a hash, tag, bookmark or branch name and selects that
    // changeset, loading older pages until it shows.
    void goToChangeset();
    // Selects the changeset, loading older pages until it shows.
    void showChangeset(const QString &node);

    // Around applying a refresh: a selection on an older page that the
    // refresh's first page no longer reaches loads its way back.
    bool isSelectionBeyondFirstPage() const;
    void keepSelectionShown();

Q_SIGNALS:
    void searchTextChanged();

private:
    void setSearchText(const QString &text);
    void revealFinished(const QString &node, bool found);

    const ActionContext &m_context;
    HistoryBrowser &m_browser;
    QString m_searchText;
    // The name a person asked to go to, while its changeset loads.
    QString m_goingTo;
};

} // namespace tillery
