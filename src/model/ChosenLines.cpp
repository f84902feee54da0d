#include "model/ChosenLines.h"

#include "model/DiffSelection.h"
#include "model/Workspace.h"

#include <algorithm>

namespace tillery {

ChosenLines::ChosenLines(Workspace &workspace, DiffSelection &selection, QObject *parent)
    : QObject(parent)
    , m_workspace(workspace)
    , m_selection(selection)
{
    connect(&selection, &DiffSelection::diffChanged, this, &ChosenLines::readShownDiff);
    connect(&selection, &DiffSelection::selectedFilePathsChanged, this, &ChosenLines::forgetMarkedWhole);
}

bool ChosenLines::canChooseShownLines() const
{
    return m_shownFile.has_value();
}

void ChosenLines::readShownDiff()
{
    const std::optional<WorkingFile> &file = m_selection.selectedFile();
    const PresentedDiffDocument &document = m_selection.diff();
    std::optional<FilePatch> patch;
    // A diff that leaves out changes in white space is not the file's: its lines cannot be taken apart.
    // Nor can a commit in the middle of a merge or another operation take only some of them.
    if (file && !m_selection.comparisonTitle() && m_workspace.tab() == WorkspaceTab::changes
        && m_selection.shownDiffWhitespace() == WhitespaceChanges::shown && file->state != FileState::removed
        && file->state != FileState::missing && m_workspace.snapshot().operation == OperationInProgress::none)
        patch = parseFilePatch(document.text);
    const auto partly = file ? m_partly.constFind(file->path) : m_partly.cend();
    if (partly != m_partly.cend() && patch && partly->diff != document.text) {
        m_partly.erase(partly);
        Q_EMIT changed();
    }
    m_shownFile = patch ? file : std::nullopt;
    m_shownDiff = patch ? document.text : QString();
    m_shownPatch = patch.value_or(FilePatch());
    m_shownIds = m_shownPatch.changedLineIds();
    m_sortedIds = m_shownIds.values();
    std::sort(m_sortedIds.begin(), m_sortedIds.end());
}

QList<qsizetype> ChosenLines::idsOf(qsizetype unifiedIndex) const
{
    const QList<PresentedDiffLine> &lines = m_selection.diff().unifiedLines;
    if (!m_shownFile || unifiedIndex < 0 || unifiedIndex >= lines.size())
        return {};
    const PresentedDiffLine &line = lines[unifiedIndex];
    if (line.kind == DiffLineKind::hunk) {
        for (const PatchHunk &hunk : m_shownPatch.hunks) {
            if (hunk.offset == line.start) {
                QList<qsizetype> ids;
                for (const PatchLine &patchLine : hunk.lines) {
                    if (patchLine.kind != PatchLineKind::context)
                        ids.append(patchLine.offset);
                }
                return ids;
            }
        }
        return {};
    }
    if (line.kind == DiffLineKind::context)
        return {};
    // A line of a file with CR LF line ends may hold several of the patch's lines.
    const auto first = std::lower_bound(m_sortedIds.cbegin(), m_sortedIds.cend(), line.start);
    const auto last = std::upper_bound(first, m_sortedIds.cend(), line.start + line.length);
    return QList<qsizetype>(first, last);
}

QSet<qsizetype> ChosenLines::shownChosen() const
{
    if (!m_shownFile)
        return {};
    if (const auto partly = m_partly.constFind(m_shownFile->path); partly != m_partly.cend())
        return partly->lines;
    return m_selection.selectedFilePaths().contains(m_shownFile->path) ? m_shownIds : QSet<qsizetype>();
}

std::optional<Qt::CheckState> ChosenLines::shownLineState(qsizetype unifiedIndex) const
{
    const QList<qsizetype> ids = idsOf(unifiedIndex);
    if (ids.isEmpty())
        return std::nullopt;
    const QSet<qsizetype> chosen = shownChosen();
    const qsizetype count = std::count_if(ids.cbegin(), ids.cend(), [&](qsizetype id) { return chosen.contains(id); });
    return count == 0 ? Qt::Unchecked : count == ids.size() ? Qt::Checked : Qt::PartiallyChecked;
}

void ChosenLines::setShownLinesChosen(qsizetype first, qsizetype last, bool chosen)
{
    if (!m_shownFile)
        return;
    QSet<qsizetype> lines = shownChosen();
    for (qsizetype index = std::min(first, last); index <= std::max(first, last); ++index) {
        for (const qsizetype id : idsOf(index)) {
            if (chosen)
                lines.insert(id);
            else
                lines.remove(id);
        }
    }
    const QString &path = m_shownFile->path;
    QSet<QString> marked = m_selection.selectedFilePaths();
    m_partly.remove(path);
    if (lines == m_shownIds) {
        marked.insert(path);
    } else {
        marked.remove(path);
        if (!lines.isEmpty())
            m_partly.insert(path, Choice{m_shownDiff, lines});
    }
    m_selection.setSelectedFilePaths(marked);
    Q_EMIT changed();
}

std::optional<ChosenChanges> ChosenLines::shownChanges(qsizetype first, qsizetype last) const
{
    if (!m_shownFile)
        return std::nullopt;
    ChosenChanges changes{*m_shownFile, m_shownDiff, {}};
    for (qsizetype index = std::min(first, last); index <= std::max(first, last); ++index) {
        for (const qsizetype id : idsOf(index))
            changes.lines.insert(id);
    }
    if (changes.lines.isEmpty())
        return std::nullopt;
    return changes;
}

Qt::CheckState ChosenLines::fileState(const QString &path) const
{
    if (m_partly.contains(path))
        return Qt::PartiallyChecked;
    return m_selection.selectedFilePaths().contains(path) ? Qt::Checked : Qt::Unchecked;
}

QList<ChosenChanges> ChosenLines::partlyChosen(const QList<WorkingFile> &files) const
{
    QList<ChosenChanges> chosen;
    for (const WorkingFile &file : files) {
        if (const auto partly = m_partly.constFind(file.path); partly != m_partly.cend())
            chosen.append(ChosenChanges{file, partly->diff, partly->lines});
    }
    return chosen;
}

void ChosenLines::clear()
{
    if (m_partly.isEmpty())
        return;
    m_partly.clear();
    Q_EMIT changed();
}

// A file ticked in the list is taken whole.
void ChosenLines::forgetMarkedWhole()
{
    bool forgot = false;
    for (const QString &path : m_selection.selectedFilePaths())
        forgot = m_partly.remove(path) || forgot;
    if (forgot)
        Q_EMIT changed();
}

} // namespace tillery
