#include "ui/AboutSheet.h"

#include "ui/Icons.h"
#include "ui/SheetParts.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

AboutSheet::AboutSheet(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(tr("About Tillery"));
    auto *icon = new QLabel;
    icon->setPixmap(symbolIcon(u"point.3.connected.trianglepath.dotted"_s).pixmap(56, 56));
    icon->setAlignment(Qt::AlignCenter);
    auto *name = sheetTitle(u"Tillery"_s);
    name->setAlignment(Qt::AlignCenter);
    auto *version = secondaryLabel(tr("Version %1").arg(QCoreApplication::applicationVersion()));
    version->setAlignment(Qt::AlignCenter);
    auto *about = secondaryLabel(u"A desktop client for Mercurial and Git repositories. It runs the hg and git "
                                 "installed on this computer."_s);
    about->setAlignment(Qt::AlignCenter);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    for (QWidget *widget : std::initializer_list<QWidget *>{icon, name, version, about, buttons})
        layout->addWidget(widget);
    setMinimumWidth(340);
}

} // namespace tillery
