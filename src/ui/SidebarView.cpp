#include "ui/SidebarView.h"

#include "model/AppModel.h"
#include "model/Desktop.h"
#include "ui/ActivityRow.h"
#include "ui/Icons.h"
#include "ui/ShownText.h"
#include "ui/SidebarModel.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QMouseEvent>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

SidebarView::SidebarView(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_sidebar(new SidebarModel(model, this))
    , m_tree(new QTreeView)
    , m_add(new QToolButton)
    , m_activity(new ActivityRow(model.activityState(), [&model] { model.cancelOperation(); }))
{
    m_tree->setModel(m_sidebar);
    m_tree->header()->hide();
    m_tree->setIconSize(QSize(20, 20));
    m_tree->setUniformRowHeights(true);
    m_tree->setDragEnabled(true);
    m_tree->setAcceptDrops(true);
    m_tree->setDropIndicatorShown(true);
    m_tree->setDragDropMode(QAbstractItemView::DragDrop);
    m_tree->setDefaultDropAction(Qt::MoveAction);
    m_tree->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->setExpandsOnDoubleClick(true);
    m_tree->setAccessibleName(tr("Repositories"));
    m_tree->setFrameShape(QFrame::NoFrame);
    // The highlight and the selected repository never part: whatever makes a
    // row current (a click, the arrow keys) selects what it shows.
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this, &SidebarView::activate);
    connect(m_tree, &QTreeView::clicked, this, &SidebarView::activate);
    // A right click opens its row's menu without making the row current.
    m_tree->viewport()->installEventFilter(this);
    connect(m_tree, &QTreeView::customContextMenuRequested, this, [this](const QPoint &position) {
        QMenu *menu = contextMenuFor(m_tree->indexAt(position));
        if (menu->isEmpty()) {
            delete menu;
            return;
        }
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(m_tree->viewport()->mapToGlobal(position));
    });
    connect(m_sidebar, &QAbstractItemModel::modelReset, this, [this] {
        expandFolders();
        showSelection();
    });
    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, &SidebarView::showSelection);
    connect(&model.library(), &RepositoryLibrary::selectedSidebarFolderIDChanged, this, &SidebarView::showSelection);

    m_add->setObjectName(u"addRepository"_s);
    m_add->setIcon(symbolIcon(u"plus"_s));
    m_add->setToolTip(tr("Add a repository"));
    m_add->setAccessibleName(tr("Add a repository"));
    m_add->setAutoRaise(true);
    m_add->setPopupMode(QToolButton::InstantPopup);
    auto *addMenu = new QMenu(m_add);
    connect(addMenu->addAction(tr("Add Existing Repository…")), &QAction::triggered, &model,
            [&model] { model.addRepository(); });
    connect(addMenu->addAction(tr("Create New Repository…")), &QAction::triggered, &model,
            [&model] { model.createRepository(); });
    connect(addMenu->addAction(tr("Clone Repository…")), &QAction::triggered, &model,
            [&model] { model.setSheetShown(Workspace::Sheet::clone, true); });
    addMenu->addSeparator();
    connect(addMenu->addAction(tr("New Folder")), &QAction::triggered, &model, [&model] { model.createFolder(); });
    connect(addMenu->addAction(tr("Sort Sidebar by Name")), &QAction::triggered, &model,
            [&model] { model.sortSidebarByName(); });
    m_add->setMenu(addMenu);

    auto *bar = new QHBoxLayout;
    bar->setContentsMargins(4, 0, 0, 0);
    bar->setSpacing(0);
    bar->addWidget(m_add);
    bar->addWidget(m_activity, 1);
    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tree, 1);
    layout->addWidget(divider);
    layout->addLayout(bar);
    expandFolders();
    showSelection();
}

void SidebarView::expandFolders()
{
    m_tree->expand(m_sidebar->sectionIndex());
    const QModelIndex section = m_sidebar->sectionIndex();
    for (int row = 0; row < m_sidebar->rowCount(section); ++row)
        m_tree->expand(m_sidebar->index(row, 0, section));
}

void SidebarView::showSelection()
{
    QModelIndex current;
    if (const std::optional<QUuid> &folder = m_model.library().selectedSidebarFolderID())
        current = m_sidebar->indexOfFolder(*folder);
    else if (const std::optional<Repository> &repository = m_model.workspace().selectedRepository())
        current = m_sidebar->indexOfRepository(repository->path);
    const QSignalBlocker blocker(m_tree->selectionModel());
    if (current.isValid())
        m_tree->selectionModel()->setCurrentIndex(current, QItemSelectionModel::ClearAndSelect);
    else
        m_tree->selectionModel()->clearSelection();
    m_tree->viewport()->update();
}

bool SidebarView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_tree->viewport() && event->type() == QEvent::MouseButtonPress
        && static_cast<QMouseEvent *>(event)->button() == Qt::RightButton)
        return true;
    return QWidget::eventFilter(watched, event);
}

void SidebarView::activate(const QModelIndex &index)
{
    if (const std::optional<Repository> repository = m_sidebar->repositoryAt(index)) {
        m_model.select(*repository);
        return;
    }
    const QUuid folder = index.data(SidebarModel::FolderRole).toUuid();
    if (!folder.isNull())
        m_model.selectSidebarFolder(folder);
}

QMenu *SidebarView::contextMenuFor(const QModelIndex &index)
{
    auto *menu = new QMenu(this);
    if (const std::optional<Repository> repository = m_sidebar->repositoryAt(index)) {
        const QString path = repository->path;
        connect(menu->addAction(fileManagerLabel(tr("Show in Finder"))), &QAction::triggered, this,
                [this, path] { m_model.reveal(path); });
        connect(menu->addAction(tr("Open in Terminal")), &QAction::triggered, this, [this, repository = *repository] {
            m_model.select(repository);
            m_model.openInTerminal();
        });
        connect(menu->addAction(menuLabel(m_model.editorTitle())), &QAction::triggered, this,
                [this, repository = *repository] {
                    m_model.select(repository);
                    m_model.openInEditor(repository.path);
                });
        QMenu *move = menu->addMenu(tr("Move to Folder"));
        connect(move->addAction(tr("Repositories")), &QAction::triggered, this,
                [this, path] { m_model.moveToTopLevel(path); });
        move->addSeparator();
        for (const RepositoryFolder &folder : m_model.library().repositoryFolders()) {
            connect(move->addAction(menuLabel(folder.name)), &QAction::triggered, this,
                    [this, path, id = folder.id] { m_model.moveIntoFolder(path, id); });
        }
        connect(move->addAction(tr("New Folder")), &QAction::triggered, this,
                [this, path] { m_model.createFolder(path); });
        menu->addSeparator();
        connect(menu->addAction(tr("Remove Repository…")), &QAction::triggered, this,
                [this, repository = *repository] { m_model.confirmRemove(repository); });
        return menu;
    }
    const QUuid folder = index.data(SidebarModel::FolderRole).toUuid();
    if (!folder.isNull()) {
        connect(menu->addAction(tr("Rename Folder…")), &QAction::triggered, this,
                [this, folder] { m_model.renameFolder(folder); });
        connect(menu->addAction(tr("Remove Folder…")), &QAction::triggered, this,
                [this, folder] { m_model.removeFolder(folder); });
    }
    return menu;
}

} // namespace tillery
