#include "ui/IconWell.h"

#include "ui/Icons.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QImageReader>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace tillery {

IconWell::IconWell(QWidget *parent)
    : QLabel(parent)
{
    setFixedSize(side + 8, side + 8);
    setAlignment(Qt::AlignCenter);
    setFrameShape(QFrame::StyledPanel);
    setAcceptDrops(true);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setToolTip(tr("Drop a picture here, or click to choose one"));
    setAccessibleName(tr("Repository icon"));
}

void IconWell::showPicture(const QImage &picture, const QIcon &fallback)
{
    setPixmap(picture.isNull() ? fallback.pixmap(side / 2, side / 2) : roundedPicture(picture, side, 12));
}

void IconWell::choose()
{
    QStringList patterns;
    for (const QByteArray &format : QImageReader::supportedImageFormats())
        patterns.append(u"*."_s + QString::fromLatin1(format));
    const QString path = QFileDialog::getOpenFileName(
        this, tr("Choose an Icon"), QStandardPaths::writableLocation(QStandardPaths::PicturesLocation),
        tr("Pictures (%1)").arg(patterns.join(u' ')));
    if (!path.isEmpty())
        Q_EMIT picked(path);
}

void IconWell::dragEnterEvent(QDragEnterEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() == 1 && urls.first().isLocalFile())
        event->acceptProposedAction();
}

void IconWell::dropEvent(QDropEvent *event)
{
    const QList<QUrl> urls = event->mimeData()->urls();
    if (urls.size() != 1 || !urls.first().isLocalFile())
        return;
    event->acceptProposedAction();
    Q_EMIT picked(urls.first().toLocalFile());
}

void IconWell::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        choose();
}

void IconWell::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        choose();
        return;
    }
    QLabel::keyPressEvent(event);
}

} // namespace tillery
