#pragma once

#include "diff/FilePatch.h"
#include "records/ChosenChanges.h"
#include "records/WorkingFile.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QSet>
#include <QString>

#include <optional>

namespace tillery {

class DiffSelection;
class Workspace;

// The lines chosen for the commit in working files of which only some
// changes go in. Lines are chosen in the diff on the Changes page; a file
// marked for commit has all its lines chosen, and one with some keeps them
// while its diff stays the same (a changed diff unmarks it, so that nothing
// unseen is committed). Ticking or unticking a file in the list takes all
// of it.
class ChosenLines final : public QObject {
    Q_OBJECT

public:
    ChosenLines(Workspace &workspace, DiffSelection &selection, QObject *parent = nullptr);

    // Whether the diff on screen is a working file's lines of text, which
    // can be chosen: not while white space changes are left out of it.
    bool canChooseShownLines() const;
    // For a unified line of the diff on screen: whether an added or removed
    // line is chosen, and for a hunk's header whether all, some or none of
    // its lines are; nothing for other lines.
    std::optional<Qt::CheckState> shownLineState(qsizetype unifiedIndex) const;
    // Chooses or leaves out the added and removed lines among unified lines
    // first to last of the diff on screen; a header stands for its hunk.
    void setShownLinesChosen(qsizetype first, qsizetype last, bool chosen);
    // The chosen changes among unified lines first to last (a header for its
    // hunk) of the diff on screen, as a discard would undo them; nothing when
    // there are none.
    std::optional<ChosenChanges> shownChanges(qsizetype first, qsizetype last) const;

    Qt::CheckState fileState(const QString &path) const;
    // The files with some of their lines chosen, among these.
    QList<ChosenChanges> partlyChosen(const QList<WorkingFile> &files) const;
    bool hasPartlyChosen() const { return !m_partly.isEmpty(); }
    void clear();

Q_SIGNALS:
    void changed();

private:
    struct Choice {
        QString diff;
        QSet<qsizetype> lines;
    };
    void readShownDiff();
    // The ids of the added and removed lines a unified line stands for.
    QList<qsizetype> idsOf(qsizetype unifiedIndex) const;
    QSet<qsizetype> shownChosen() const;
    void forgetMarkedWhole();

    Workspace &m_workspace;
    DiffSelection &m_selection;
    QHash<QString, Choice> m_partly;
    // The file on screen when its lines can be chosen.
    std::optional<WorkingFile> m_shownFile;
    QString m_shownDiff;
    FilePatch m_shownPatch;
    QSet<qsizetype> m_shownIds;
    QList<qsizetype> m_sortedIds;
};

} // namespace tillery
