#include "ui/WelcomeView.h"

#include "model/AppModel.h"
#include "ui/ButtonStyle.h"
#include "ui/Icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

WelcomeView::WelcomeView(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
{
    auto *icon = new QLabel;
    icon->setPixmap(symbolIcon(u"point.3.connected.trianglepath.dotted"_s).pixmap(64, 64));
    icon->setAlignment(Qt::AlignCenter);
    auto *title = new QLabel(tr("Welcome to Tillery"));
    QFont titleFont = title->font();
    titleFont.setPointSizeF(titleFont.pointSizeF() * 2.2);
    titleFont.setWeight(QFont::DemiBold);
    title->setFont(titleFont);
    title->setAlignment(Qt::AlignCenter);
    auto *line = new QLabel(
        tr("Manage repositories, review changes, and work with Mercurial or Git without leaving your desktop."));
    line->setAlignment(Qt::AlignCenter);
    line->setWordWrap(true);
    line->setForegroundRole(QPalette::PlaceholderText);

    auto *add = new QPushButton(tr("Add Local Repository…"));
    auto *create = new QPushButton(tr("Create Repository…"));
    auto *clone = new QPushButton(tr("Clone Repository…"));
    connect(add, &QPushButton::clicked, &model, [&model] { model.addRepository(); });
    connect(create, &QPushButton::clicked, &model, [&model] { model.createRepository(); });
    connect(clone, &QPushButton::clicked, &model, [&model] { model.setSheetShown(Workspace::Sheet::clone, true); });
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton *button : {add, create, clone}) {
        followButtonAppearance(button, settings);
        buttons->addWidget(button);
    }
    buttons->addStretch();

    auto *layout = new QVBoxLayout(this);
    layout->addStretch();
    layout->addWidget(icon);
    layout->addWidget(title);
    layout->addWidget(line);
    layout->addSpacing(12);
    layout->addLayout(buttons);
    layout->addStretch();
}

} // namespace tillery
