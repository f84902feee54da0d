#include "ui/ChangesView.h"

#include "model/AppModel.h"
#include "model/Desktop.h"
#include "ui/AnnotationView.h"
#include "ui/ConflictBanner.h"
#include "ui/ChangedFileDelegate.h"
#include "ui/ChangedFilesModel.h"
#include "ui/CommitBox.h"
#include "ui/DiffView.h"
#include "ui/EmptyState.h"
#include "ui/RowMenus.h"
#include "ui/ShownText.h"
#include "ui/Spinner.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// The folders that hold a file, outermost first: "a/b/c.txt" gives "a", "a/b".
QStringList enclosingFolders(const QString &path)
{
    QStringList folders;
    const QStringList parts = path.split(u'/');
    for (qsizetype index = 1; index < parts.size(); ++index)
        folders.append(parts.first(index).join(u'/'));
    return folders;
}

} // namespace

ChangesView::ChangesView(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_files(new ChangedFilesModel(model, ChangedFilesModel::Source::workingCopy, this))
    , m_pages(new QStackedWidget)
    , m_list(new QListView)
    , m_selectAll(new QCheckBox)
    , m_commitBox(new CommitBox(model, settings))
    , m_diffView(new DiffView(
          model, settings,
          [&model] {
              const std::optional<WorkingFile> &file = model.diffSelection().selectedFile();
              return file ? file->path : QString();
          },
          tr("Select a changed file to inspect its diff.")))
    , m_annotation(new AnnotationView(model, WorkspaceTab::changes, m_diffView))
{
    m_list->setModel(m_files);
    m_list->setItemDelegate(new ChangedFileDelegate(m_list));
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_list->setAccessibleName(tr("Changed files"));
    m_list->setFrameShape(QFrame::NoFrame);
    offerRowMenus(m_list, [this](int row) { return contextMenuFor(row); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ChangesView::listSelectionChanged);

    m_selectAll->setObjectName(u"selectAllFiles"_s);
    m_selectAll->setToolTip(tr("Select all changed files"));
    m_selectAll->setAccessibleName(tr("Select all changed files"));
    connect(m_selectAll, &QCheckBox::clicked, this, [this](bool checked) {
        QSet<QString> marked;
        if (checked) {
            for (const WorkingFile &file : m_model.workspace().snapshot().files)
                marked.insert(file.path);
        }
        m_model.setSelectedFilePaths(marked);
    });

    auto *header = new QHBoxLayout;
    header->setContentsMargins(8, 4, 8, 4);
    header->addWidget(m_selectAll);
    header->addStretch();
    auto *listPage = new QWidget;
    auto *listLayout = new QVBoxLayout(listPage);
    listLayout->setContentsMargins(0, 0, 0, 0);
    listLayout->setSpacing(0);
    listLayout->addLayout(header);
    listLayout->addWidget(m_list, 1);

    m_pages->addWidget(loadingPage(tr("Loading Changes…")));
    m_pages->addWidget(new EmptyState(tr("No Local Changes"), u"checkmark.circle"_s, tr("The working copy is clean.")));
    m_pages->addWidget(listPage);

    auto *left = new QWidget;
    auto *leftLayout = new QVBoxLayout(left);
    leftLayout->setContentsMargins(0, 0, 0, 0);
    leftLayout->setSpacing(0);
    leftLayout->addWidget(m_pages, 1);
    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);
    leftLayout->addWidget(divider);
    leftLayout->addWidget(m_commitBox);
    left->setMinimumWidth(240);

    auto *splitter = new QSplitter(Qt::Horizontal);
    splitter->addWidget(left);
    splitter->addWidget(m_annotation);
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({300, 600});
    splitter->setChildrenCollapsible(false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(new ConflictBanner(model));
    layout->addWidget(splitter, 1);
    addAction(m_commitBox->commitAction());

    connect(&model.workspace(), &Workspace::snapshotChanged, this, [this] {
        updateState();
        updateSelectAll();
        showSelectionFromModel();
    });
    connect(&model.workspace(), &Workspace::isSwitchingRepositoryChanged, this, &ChangesView::updateState);
    connect(&model.diffSelection(), &DiffSelection::selectedFilePathsChanged, this, &ChangesView::updateSelectAll);
    connect(&model.diffSelection(), &DiffSelection::selectedChangeFilesChanged, this,
            &ChangesView::showSelectionFromModel);
    connect(&model.diffSelection(), &DiffSelection::selectedFileChanged, this, &ChangesView::showSelectionFromModel);
    updateState();
    updateSelectAll();
}

void ChangesView::updateState()
{
    State state = State::list;
    if (m_model.workspace().isSwitchingRepository())
        state = State::loading;
    else if (m_model.workspace().snapshot().files.isEmpty())
        state = State::clean;
    m_pages->setCurrentIndex(static_cast<int>(state));
}

void ChangesView::updateSelectAll()
{
    const QList<WorkingFile> &files = m_model.workspace().snapshot().files;
    const QSet<QString> &marked = m_model.diffSelection().selectedFilePaths();
    const bool all = !files.isEmpty() && std::all_of(files.cbegin(), files.cend(), [&marked](const WorkingFile &file) {
        return marked.contains(file.path);
    });
    m_selectAll->setChecked(all);
}

void ChangesView::showSelectionFromModel()
{
    if (m_updatingSelection)
        return;
    m_updatingSelection = true;
    QItemSelection selection;
    for (const WorkingFile &file : m_model.diffSelection().selectedChangeFiles()) {
        const int row = m_files->rowOf(file.path);
        if (row >= 0)
            selection.select(m_files->index(row), m_files->index(row));
    }
    m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    // The row whose diff is shown is the current one, where the keys go on from.
    if (const std::optional<WorkingFile> &focus = m_model.diffSelection().selectedFile()) {
        if (const int row = m_files->rowOf(focus->path); row >= 0)
            m_list->selectionModel()->setCurrentIndex(m_files->index(row), QItemSelectionModel::NoUpdate);
    }
    m_updatingSelection = false;
}

void ChangesView::listSelectionChanged()
{
    if (m_updatingSelection)
        return;
    m_updatingSelection = true;
    QSet<WorkingFile> selected;
    for (const QModelIndex &index : m_list->selectionModel()->selectedIndexes())
        selected.insert(m_files->fileAt(index.row()));
    m_annotation->closeIfShown();
    m_model.selectChangeFiles(selected);
    m_updatingSelection = false;
}

QMenu *ChangesView::contextMenuFor(int row)
{
    auto *menu = new QMenu(this);
    const std::optional<Repository> repository = m_model.workspace().selectedRepository();
    if (!repository || row < 0 || row >= m_files->rowCount())
        return menu;
    const WorkingFile clicked = m_files->fileAt(row);
    const QSet<WorkingFile> &selection = m_model.diffSelection().selectedChangeFiles();
    QSet<WorkingFile> targets{clicked};
    if (selection.contains(clicked))
        targets = selection;
    const QString ignoreFile = m_model.ignoreFileName();
    const QString absolute = repository->path + u'/' + clicked.path;

    const QString discardLabel =
        targets.size() == 1 ? tr("Discard Changes") : tr("Discard %n Selected Changes", nullptr, int(targets.size()));
    const bool anyUnresolved = std::any_of(targets.cbegin(), targets.cend(), [](const WorkingFile &file) {
        return file.state == FileState::unresolved;
    });
    const QStringList &resolved = m_model.workspace().snapshot().resolvedFiles;
    const bool anyResolved = std::any_of(targets.cbegin(), targets.cend(), [&resolved](const WorkingFile &file) {
        return resolved.contains(file.path);
    });
    // Each acts on the targets, made the selection first.
    const auto add = [this, menu, targets](const QString &label, const std::function<void()> &action) {
        connect(menu->addAction(label), &QAction::triggered, this, [this, targets, action] {
            m_model.selectChangeFiles(targets);
            action();
        });
    };
    if (anyUnresolved) {
        add(tr("Use Mine"), [this] { m_model.takeConflictSide(ConflictSide::mine); });
        add(tr("Use Theirs"), [this] { m_model.takeConflictSide(ConflictSide::theirs); });
        add(tr("Mark as Resolved"), [this] { m_model.markSelectedResolved(true); });
        if (clicked.state == FileState::unresolved) {
            connect(menu->addAction(tr("Open in Merge Tool")), &QAction::triggered, this, [this, clicked] {
                m_model.selectChangeFiles({clicked});
                m_model.openInMergeTool();
            });
        }
    }
    if (anyResolved)
        add(tr("Mark as Unresolved"), [this] { m_model.markSelectedResolved(false); });
    if (anyUnresolved || anyResolved)
        menu->addSeparator();
    add(discardLabel, [this] { m_model.discardSelected(); });
    add(byKind(m_model.traits().kind, tr("Shelve Selected Files…"), tr("Stash Selected Files…")),
        [this] { m_model.shelveSelectedFiles(); });
    menu->addSeparator();
    connect(menu->addAction(tr("Ignore File (Add to %1)").arg(ignoreFile)), &QAction::triggered, this,
            [this, path = clicked.path] { m_model.addIgnoreEntry(path); });
    const QStringList folders = enclosingFolders(clicked.path);
    if (!folders.isEmpty()) {
        QMenu *folderMenu = menu->addMenu(tr("Ignore Folder (Add to %1)").arg(ignoreFile));
        for (const QString &folder : folders) {
            connect(folderMenu->addAction(menuLabel(folder)), &QAction::triggered, this,
                    [this, folder] { m_model.addIgnoreEntry(folder + u'/'); });
        }
    }
    const QString name = QFileInfo(clicked.path).fileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    if (dot > 0 && dot < name.size() - 1) {
        const QString extension = name.sliced(dot);
        connect(menu->addAction(menuLabel(tr("Ignore All %1 Files (Add to %2)").arg(extension, ignoreFile))),
                &QAction::triggered, this, [this, extension] { m_model.addIgnoreEntry(u'*' + extension); });
    }
    menu->addSeparator();
    connect(menu->addAction(tr("Copy File Path")), &QAction::triggered, this,
            [this, absolute] { m_model.copyPaths({absolute}); });
    connect(menu->addAction(tr("Copy Relative File Path")), &QAction::triggered, this,
            [this, path = clicked.path] { m_model.copyPaths({path}); });
    menu->addSeparator();
    connect(menu->addAction(fileManagerLabel(tr("Reveal in Finder"))), &QAction::triggered, this,
            [this, absolute] { m_model.reveal(absolute); });
    connect(menu->addAction(menuLabel(m_model.editorTitle())), &QAction::triggered, this,
            [this, absolute] { m_model.openInEditor(absolute); });
    connect(menu->addAction(tr("Open with Default Program")), &QAction::triggered, this,
            [this, absolute] { m_model.openWithDefaultApplication(absolute); });
    menu->addSeparator();
    QAction *annotate = menu->addAction(tr("Annotate"));
    // A file the working copy's parent does not have has no lines to annotate.
    annotate->setEnabled(clicked.state != FileState::untracked && clicked.state != FileState::added);
    connect(annotate, &QAction::triggered, this, [this, path = clicked.path] { m_model.annotate(path); });
    QAction *fileHistory = menu->addAction(tr("Show History of This File"));
    // A file not committed yet has no history.
    fileHistory->setEnabled(clicked.state != FileState::untracked && clicked.state != FileState::added);
    connect(fileHistory, &QAction::triggered, this, [this, path = clicked.path] { m_model.showFileHistory(path); });
    return menu;
}

} // namespace tillery
