#include "ui/WorkspaceToolbar.h"

#include "model/AppModel.h"
#include "ui/Icons.h"
#include "ui/ShownText.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QToolButton *toolButton(const QString &symbol, const QString &label)
{
    auto *button = new QToolButton;
    button->setIcon(symbolIcon(symbol));
    button->setIconSize(QSize(18, 18));
    button->setToolTip(label);
    button->setAccessibleName(label);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

WorkspaceToolbar::WorkspaceToolbar(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_title(new QLabel)
    , m_branch(new QToolButton)
    , m_fetch(toolButton(u"arrow.triangle.2.circlepath"_s, tr("Fetch")))
    , m_pull(toolButton(u"arrow.down.circle"_s, tr("Pull")))
    , m_push(toolButton(u"arrow.up.circle"_s, tr("Push")))
    , m_terminal(toolButton(u"terminal"_s, tr("Open in Terminal")))
    , m_editor(toolButton(u"pencil"_s, model.editorTitle()))
    , m_refresh(toolButton(u"arrow.clockwise"_s, tr("Refresh")))
{
    QFont titleFont = m_title->font();
    titleFont.setWeight(QFont::DemiBold);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.15);
    m_title->setFont(titleFont);
    m_title->setTextFormat(Qt::PlainText);

    m_branch->setIcon(symbolIcon(u"arrow.triangle.branch"_s));
    m_branch->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_branch->setPopupMode(QToolButton::InstantPopup);
    m_branch->setAutoRaise(true);
    m_branch->setFocusPolicy(Qt::TabFocus);
    m_branch->setMenu(new QMenu(m_branch));
    connect(m_branch->menu(), &QMenu::aboutToShow, this, &WorkspaceToolbar::branchMenu);
    m_push->setToolButtonStyle(Qt::ToolButtonIconOnly);

    connect(m_fetch, &QToolButton::clicked, &model, [&model] { model.fetch(); });
    connect(m_pull, &QToolButton::clicked, &model, [&model] { model.pull(); });
    connect(m_push, &QToolButton::clicked, &model, [&model] {
        if (model.workspace().snapshot().currentBranchIsPublished)
            model.push();
        else
            model.publishBranch();
    });
    connect(m_terminal, &QToolButton::clicked, &model, [&model] { model.openInTerminal(); });
    connect(m_editor, &QToolButton::clicked, &model, [&model] {
        if (const std::optional<Repository> &repository = model.workspace().selectedRepository())
            model.openInEditor(repository->path);
    });
    connect(m_refresh, &QToolButton::clicked, &model, [&model] { model.refresh(); });

    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 8, 2);
    layout->setSpacing(2);
    layout->addWidget(m_title);
    layout->addSpacing(8);
    layout->addWidget(m_branch);
    layout->addStretch();
    for (QToolButton *button : {m_fetch, m_pull, m_push})
        layout->addWidget(button);
    layout->addSpacing(10);
    for (QToolButton *button : {m_terminal, m_editor, m_refresh})
        layout->addWidget(button);

    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, &WorkspaceToolbar::update);
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &WorkspaceToolbar::update);
    connect(&model.workspace(), &Workspace::isSwitchingRepositoryChanged, this, &WorkspaceToolbar::update);
    connect(&model.activityState(), &ActivityState::isBusyChanged, this, &WorkspaceToolbar::update);
    connect(&model, &AppModel::integrationsChanged, this, &WorkspaceToolbar::update);
    update();
}

QString WorkspaceToolbar::currentName(const AppModel &model)
{
    const RepositorySnapshot &snapshot = model.workspace().snapshot();
    if (snapshot.activeBookmark)
        return *snapshot.activeBookmark;
    return snapshot.branch;
}

QMenu *WorkspaceToolbar::branchMenu()
{
    QMenu *menu = m_branch->menu();
    menu->clear();
    const RepositorySnapshot &snapshot = m_model.workspace().snapshot();
    const KindTraits words = m_model.traits();
    menu->addSection(capitalized(words.bookmarks));
    for (const Bookmark &bookmark : snapshot.bookmarks) {
        QAction *item = menu->addAction(menuLabel(bookmark.name));
        item->setCheckable(true);
        item->setChecked(bookmark.active);
        connect(item, &QAction::triggered, this,
                [this, bookmark] { m_model.switchTo(bookmark, tr("Switching to %1").arg(bookmark.name)); });
    }
    if (snapshot.bookmarks.isEmpty())
        menu->addAction(tr("No %1").arg(words.bookmarks))->setEnabled(false);
    menu->addSeparator();
    connect(menu->addAction(tr("New %1…").arg(capitalized(words.bookmark))), &QAction::triggered, this,
            [this] { m_model.setSheetShown(Workspace::Sheet::bookmark, true); });
    return menu;
}

void WorkspaceToolbar::update()
{
    const std::optional<Repository> &repository = m_model.workspace().selectedRepository();
    m_title->setText(repository ? QFileInfo(repository->path).fileName() : QString());
    const QString current = currentName(m_model);
    m_branch->setText(menuLabel(current));
    m_branch->setToolTip(tr("Switch branch"));
    m_branch->setAccessibleName(tr("Branch: %1").arg(current));
    const bool published = m_model.workspace().snapshot().currentBranchIsPublished;
    const QString pushLabel = published ? tr("Push") : tr("Publish this branch");
    m_push->setToolTip(pushLabel);
    m_push->setAccessibleName(pushLabel);
    m_push->setText(pushLabel);
    m_push->setToolButtonStyle(published ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextBesideIcon);
    // Until a repository's first snapshot says whether its branch is
    // published, neither Push nor Publish is offered.
    m_push->setVisible(repository && !m_model.workspace().isSwitchingRepository());
    m_editor->setToolTip(plainToolTip(m_model.editorTitle()));
    m_editor->setAccessibleName(m_model.editorTitle());
    const bool free = repository && !m_model.activityState().isBusy();
    for (QToolButton *button : {m_branch, m_fetch, m_pull, m_push, m_terminal, m_editor, m_refresh})
        button->setEnabled(free);
}

} // namespace tillery
