#pragma once

#include <QObject>

class QKeyEvent;
class QWidget;

namespace tillery {

// Menu shortcuts work application-wide, so one that is also a text-editing
// key (Ctrl+Backspace deletes the previous word) would be taken from a text
// field. Installed on the application, this lets a focused text field have
// its editing keys first; elsewhere the menu item keeps its shortcut.
class TextFieldKeys final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    static bool isTextField(const QWidget *widget);
    static bool isTextEditingKey(const QKeyEvent &event);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

} // namespace tillery
