#include "model/HistoryNavigation.h"

#include "model/ActionContext.h"
#include "model/DiffSelection.h"
#include "model/HistoryBrowser.h"
#include "model/HistorySearch.h"
#include "model/Prompts.h"
#include "model/Workspace.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

HistoryNavigation::HistoryNavigation(const ActionContext &context, HistoryBrowser &browser, QObject *parent)
    : QObject(parent)
    , m_context(context)
    , m_browser(browser)
{
    connect(&browser, &HistoryBrowser::revealFinished, this, &HistoryNavigation::revealFinished);
    // A search selects its first match unless the selection is among them.
    connect(&browser, &HistoryBrowser::appended, this, [this](qsizetype first) {
        const std::optional<Changeset> &selected = m_context.selection.selectedChangeset();
        if (first == 0 && m_context.workspace.tab() == WorkspaceTab::history
            && (!selected || m_browser.rowOf(selected->node) < 0))
            m_context.selection.selectChangeset(m_browser.changesets().first());
    });
    connect(&context.workspace, &Workspace::selectedRepositoryChanged, this, [this] {
        m_goingTo.clear();
        setSearchText(QString());
    });
}

void HistoryNavigation::search(const QString &text)
{
    const HistoryFilter filter = parseHistorySearch(text);
    const std::optional<Changeset> &selected = m_context.selection.selectedChangeset();
    m_goingTo.clear();
    setSearchText(text);
    // The same search again only runs again after it failed.
    if (filter == m_browser.filter() && m_browser.failure().isEmpty())
        return;
    if (filter.isEmpty() && selected && !m_browser.filter().isEmpty()) {
        // Leaving a search lands on the match that was selected.
        m_browser.reveal(selected->node);
        return;
    }
    m_browser.setFilter(filter);
}

void HistoryNavigation::showFileHistory(const QString &path)
{
    HistoryFilter filter;
    filter.path = path;
    filter.followsRenames = true;
    m_goingTo.clear();
    setSearchText(u"file:\""_s + path + u'"');
    m_browser.setFilter(filter);
}

void HistoryNavigation::goToChangeset()
{
    const std::optional<ActionContext::Selected> selected = m_context.selected();
    if (!selected)
        return;
    const KindTraits traits = selected->backend.traits();
    const std::optional<QString> answer = m_context.prompts.enterText(
        {tr("Go to %1").arg(capitalized(traits.changeset)),
         traits.kind == RepositoryKind::mercurial
             ? tr("Enter a hash or its start, a revision number, or a tag, bookmark or branch name.")
             : tr("Enter a hash or its start, or a tag or branch name."),
         QString(), QCoreApplication::translate("tillery::AlertButtons", "Go")});
    const QString name = answer ? answer->trimmed() : QString();
    if (name.isEmpty())
        return;
    m_goingTo = name;
    m_context.operations.perform(
        tr("Looking for %1").arg(name),
        [backend = &selected->backend, path = selected->repository.path, name] {
            return backend->resolveChangeset(path, name);
        },
        [this, name, repository = selected->repository](const std::optional<QString> &node) {
            if (m_goingTo != name || m_context.workspace.selectedRepository() != repository)
                return;
            if (!node) {
                m_goingTo.clear();
                m_context.prompts.alert(
                    {tr("Nothing is named “%1”.").arg(name),
                     tr("No %1 has this hash, tag or name.").arg(m_context.selected()->backend.traits().changeset),
                     {QCoreApplication::translate("tillery::AlertButtons", "OK")}});
                return;
            }
            setSearchText(QString());
            m_browser.reveal(*node);
        });
}

void HistoryNavigation::showChangeset(const QString &node)
{
    const qsizetype row = m_browser.rowOf(node);
    if (row >= 0) {
        m_context.selection.selectChangeset(m_browser.changesets().at(row));
        return;
    }
    m_goingTo.clear();
    setSearchText(QString());
    m_browser.reveal(node);
}

bool HistoryNavigation::isSelectionBeyondFirstPage() const
{
    const std::optional<Changeset> &selected = m_context.selection.selectedChangeset();
    return selected && m_browser.filter().isEmpty()
           && m_browser.rowOf(selected->node) >= m_context.workspace.snapshot().history.size();
}

void HistoryNavigation::keepSelectionShown()
{
    const std::optional<Changeset> &selected = m_context.selection.selectedChangeset();
    if (selected && m_browser.rowOf(selected->node) < 0)
        m_browser.reveal(selected->node);
}

void HistoryNavigation::setSearchText(const QString &text)
{
    if (m_searchText == text)
        return;
    m_searchText = text;
    Q_EMIT searchTextChanged();
}

void HistoryNavigation::revealFinished(const QString &node, bool found)
{
    const bool wentTo = !std::exchange(m_goingTo, QString()).isEmpty();
    const qsizetype row = found ? m_browser.rowOf(node) : -1;
    if (row >= 0) {
        m_context.selection.selectChangeset(m_browser.changesets().at(row));
        return;
    }
    if (wentTo) {
        m_context.prompts.alert(
            {byKind(m_context.selected()->backend.kind(), tr("This changeset is not in the history."),
                    tr("This commit is not in the history.")),
             tr("It is not reachable from any branch, tag or head."),
             {QCoreApplication::translate("tillery::AlertButtons", "OK")}});
    }
    // What was selected is gone: show what the page has.
    m_context.selection.showPage();
}

} // namespace tillery
