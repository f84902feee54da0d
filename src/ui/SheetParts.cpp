#include "ui/SheetParts.h"

#include <QLabel>

namespace tillery {

QLabel *sheetTitle(const QString &text)
{
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.1);
    label->setFont(font);
    return label;
}

QLabel *secondaryLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

ProblemLabel::ProblemLabel(QWidget *parent)
    : QLabel(parent)
{
    setWordWrap(true);
    setTextFormat(Qt::PlainText);
    QPalette warning = palette();
    warning.setColor(QPalette::WindowText, QColor(214, 69, 58));
    setPalette(warning);
    setAccessibleName(QStringLiteral("Problem"));
    hide();
}

void ProblemLabel::setProblem(const QString &problem)
{
    setText(problem);
    setHidden(problem.isEmpty());
}

} // namespace tillery
