#pragma once

#include "ui/ShownText.h"

#include <QLabel>

class QHBoxLayout;

namespace tillery {

// A file's path as plain text, shortened in the middle to the width it is
// given; the whole path is its tooltip.
class PathLabel final : public QLabel {
public:
    PathLabel() { setTextFormat(Qt::PlainText); }
    void setFullText(const QString &text)
    {
        m_full = text;
        setToolTip(plainToolTip(text));
        updateElision();
    }

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        QLabel::resizeEvent(event);
        updateElision();
    }

private:
    void updateElision() { setText(fontMetrics().elidedText(m_full, Qt::ElideMiddle, std::max(20, width()))); }
    QString m_full;
};

// A pane's header row: the file icon, then the path (of medium weight,
// taking the spare width); the caller adds what follows it.
QHBoxLayout *fileHeader(PathLabel *path);

} // namespace tillery
