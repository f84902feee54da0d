#include "ui/TextFieldKeys.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace tillery {

bool TextFieldKeys::isTextField(const QWidget *widget)
{
    return qobject_cast<const QLineEdit *>(widget) || qobject_cast<const QPlainTextEdit *>(widget)
           || qobject_cast<const QTextEdit *>(widget) || qobject_cast<const QAbstractSpinBox *>(widget);
}

bool TextFieldKeys::isTextEditingKey(const QKeyEvent &event)
{
    static const QList<QKeySequence::StandardKey> editing{QKeySequence::Backspace,
                                                          QKeySequence::Delete,
                                                          QKeySequence::DeleteStartOfWord,
                                                          QKeySequence::DeleteEndOfWord,
                                                          QKeySequence::DeleteEndOfLine,
                                                          QKeySequence::DeleteCompleteLine,
                                                          QKeySequence::Copy,
                                                          QKeySequence::Cut,
                                                          QKeySequence::Paste,
                                                          QKeySequence::Undo,
                                                          QKeySequence::Redo,
                                                          QKeySequence::SelectAll,
                                                          QKeySequence::Deselect,
                                                          QKeySequence::MoveToNextChar,
                                                          QKeySequence::MoveToPreviousChar,
                                                          QKeySequence::MoveToNextWord,
                                                          QKeySequence::MoveToPreviousWord,
                                                          QKeySequence::MoveToStartOfLine,
                                                          QKeySequence::MoveToEndOfLine,
                                                          QKeySequence::MoveToStartOfBlock,
                                                          QKeySequence::MoveToEndOfBlock,
                                                          QKeySequence::MoveToStartOfDocument,
                                                          QKeySequence::MoveToEndOfDocument,
                                                          QKeySequence::SelectNextChar,
                                                          QKeySequence::SelectPreviousChar,
                                                          QKeySequence::SelectNextWord,
                                                          QKeySequence::SelectPreviousWord,
                                                          QKeySequence::SelectStartOfLine,
                                                          QKeySequence::SelectEndOfLine,
                                                          QKeySequence::SelectStartOfBlock,
                                                          QKeySequence::SelectEndOfBlock,
                                                          QKeySequence::SelectStartOfDocument,
                                                          QKeySequence::SelectEndOfDocument};
    return std::any_of(editing.cbegin(), editing.cend(),
                       [&event](QKeySequence::StandardKey key) { return event.matches(key); });
}

bool TextFieldKeys::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && watched == QApplication::focusWidget()
        && isTextField(QApplication::focusWidget()) && isTextEditingKey(*static_cast<QKeyEvent *>(event))) {
        // Accepted, the key reaches the field as a key press instead.
        event->accept();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace tillery
