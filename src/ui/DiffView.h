#pragma once

#include "ui/DiffCanvas.h"

#include <QWidget>

#include <functional>

class QLabel;
class QPlainTextEdit;
class QStackedWidget;
class QToolButton;

namespace tillery {

class AppModel;
class EmptyState;
class ImagePreview;
class PathLabel;
class ViewSettings;

// The diff pane: a header with the file's path and the layout menu, then
// the picture, the loading note, the empty state, a message, or the rows.
class DiffView final : public QWidget {
    Q_OBJECT

public:
    enum class Body { image, loading, empty, message, rows };

    // `fileName` gives the displayed file's repository-relative path;
    // `placeholder` is the empty state's detail.
    DiffView(AppModel &model, ViewSettings &settings, std::function<QString()> fileName, QString placeholder,
             QWidget *parent = nullptr);

    void setPlaceholder(const QString &placeholder);

public Q_SLOTS:
    void refresh();

private:
    void chooseClickedLine(qsizetype line, bool extendsRange);
    void showLinesMenu(const QPoint &position);

    AppModel &m_model;
    ViewSettings &m_settings;
    std::function<QString()> m_fileName;
    PathLabel *m_path;
    QToolButton *m_settingsButton;
    QStackedWidget *m_body;
    ImagePreview *m_image;
    EmptyState *m_empty;
    QPlainTextEdit *m_message;
    DiffCanvas *m_canvas;
    // The rows on the canvas, so that an unchanged document is not set again.
    const PresentedDiffLine *m_shownRows = nullptr;
    // The box clicked last, and whether it chose, for a Shift-click's range.
    qsizetype m_lastChoice = -1;
    bool m_lastChoiceWasChoosing = true;
};

} // namespace tillery
