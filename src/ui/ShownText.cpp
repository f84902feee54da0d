#include "ui/ShownText.h"

#include <QLabel>
#include <QMessageBox>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace tillery {

QString menuLabel(const QString &text)
{
    QString label = text;
    return label.replace(u'&', u"&&"_s);
}

QString plainToolTip(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return text;
    return u"<p style=\"white-space:pre-wrap\">"_s + text.toHtmlEscaped() + u"</p>"_s;
}

void showMessageAsPlainText(QMessageBox &box)
{
    box.setTextFormat(Qt::PlainText);
    for (QLabel *label : box.findChildren<QLabel *>(u"qt_msgbox_informativelabel"_s))
        label->setTextFormat(Qt::PlainText);
}

} // namespace tillery
