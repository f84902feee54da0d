#pragma once

#include "records/WorkspaceTab.h"

#include <QStackedWidget>

class QAbstractButton;
class QLabel;

namespace tillery {

class AnnotationCanvas;
class AppModel;
class EmptyState;
class PathLabel;

// The diff pane's place on a page: the page's diff view, or in its stead
// the file annotated from this page, under a header with its path, the
// changeset it is annotated as of and a button that returns to the diff
// (Escape does too). While it reads, a spinner; a binary file, one that is
// not UTF-8 text or one that could not be annotated, a message.
class AnnotationView final : public QStackedWidget {
    Q_OBJECT

public:
    enum class Body { loading, message, lines };

    AnnotationView(AppModel &model, WorkspaceTab page, QWidget *diffView, QWidget *parent = nullptr);

    AnnotationCanvas *canvas() const { return m_canvas; }
    bool isAnnotationShown() const { return currentWidget() == m_panel; }
    Body body() const;
    // The message shown instead of lines: its title and detail.
    QString message() const;
    // Another file was chosen on the page: its diff shows again.
    void closeIfShown();

Q_SIGNALS:
    // A line's changeset was clicked in the gutter.
    void changesetClicked(const QString &node);

private:
    void refresh();
    void showMessage(const QString &title, const QString &detail = QString());

    AppModel &m_model;
    WorkspaceTab m_page;
    QWidget *m_diffView;
    QWidget *m_panel;
    PathLabel *m_path;
    QLabel *m_revision;
    QAbstractButton *m_close;
    QStackedWidget *m_body;
    EmptyState *m_message;
    AnnotationCanvas *m_canvas;
};

} // namespace tillery
