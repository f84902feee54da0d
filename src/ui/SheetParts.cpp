#include "ui/SheetParts.h"

#include <QLabel>

using namespace Qt::StringLiterals;

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

QString htmlWithCodeSpans(const QString &text)
{
    QString html;
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype open = text.indexOf(u'`', from);
        const qsizetype close = open < 0 ? -1 : text.indexOf(u'`', open + 1);
        if (close < 0) {
            html += text.mid(from).toHtmlEscaped();
            break;
        }
        html += text.mid(from, open - from).toHtmlEscaped();
        html += u"<code>"_s + text.mid(open + 1, close - open - 1).toHtmlEscaped() + u"</code>"_s;
        from = close + 1;
    }
    return html;
}

namespace {

QLabel *quietLabel(const QString &text, Qt::TextFormat format)
{
    auto *label = new QLabel;
    label->setWordWrap(true);
    label->setTextFormat(format);
    label->setText(text);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

QLabel *secondaryLabel(const QString &text)
{
    return quietLabel(htmlWithCodeSpans(text), Qt::RichText);
}

QLabel *quietNameLabel(const QString &name)
{
    return quietLabel(name, Qt::PlainText);
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
