#pragma once

#include "model/Background.h"
#include "records/Annotation.h"
#include "records/Repository.h"
#include "records/WorkspaceTab.h"

#include <QObject>
#include <QString>

#include <optional>

namespace tillery {

class DiffSelection;
class Workspace;

// The file shown annotated in place of a page's diff: which file, as of
// which changeset, opened from which page, and its lines once they are read
// (or why there are none). One file at a time: opening another, closing, or
// selecting another repository cancels a read in flight, whose tool run
// stops and whose result is dropped.
class Annotation final : public QObject {
    Q_OBJECT

public:
    struct Subject {
        QString path;
        // The changeset's full id; nothing for the working copy's parent.
        std::optional<QString> node;
        WorkspaceTab page = WorkspaceTab::changes;

        friend bool operator==(const Subject &, const Subject &) = default;
    };
    enum class State { closed, loading, loaded, failed };

    Annotation(const Workspace &workspace, const DiffSelection &selection, BackgroundPool &pool,
               QObject *parent = nullptr);
    ~Annotation() override;

    State state() const { return m_state; }
    // Nothing while closed.
    const std::optional<Subject> &subject() const { return m_subject; }
    // The lines once loaded.
    const FileAnnotation &lines() const { return m_lines; }
    // Why the file could not be annotated, once failed.
    const QString &failure() const { return m_failure; }

    // The file of the page on screen: on History as of the selected
    // changeset, on Changes as of the working copy's parent.
    void annotate(const QString &path);
    void open(const Repository &repository, const Subject &subject);
    void close();

Q_SIGNALS:
    // The state, the subject, the lines and the failure change together.
    void changed();

private:
    void show(State state, const std::optional<Subject> &subject, const FileAnnotation &lines = {},
              const QString &failure = QString());

    const Workspace &m_workspace;
    const DiffSelection &m_selection;
    BackgroundPool &m_pool;
    State m_state = State::closed;
    std::optional<Subject> m_subject;
    FileAnnotation m_lines;
    QString m_failure;
    BackgroundTask m_task;
};

} // namespace tillery
