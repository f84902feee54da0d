#include "ui/HistoryView.h"

#include "model/AppModel.h"
#include "ui/AnnotationView.h"
#include "ui/ChangedFileDelegate.h"
#include "ui/ChangedFilesModel.h"
#include "ui/ChangesetHeader.h"
#include "ui/HistoryListView.h"
#include "ui/DiffView.h"
#include "ui/EmptyState.h"
#include "ui/RowMenus.h"
#include "ui/Spinner.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QListView *makeList(const QString &accessibleName)
{
    auto *list = new QListView;
    list->setUniformItemSizes(true);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setFrameShape(QFrame::NoFrame);
    list->setAccessibleName(accessibleName);
    return list;
}

QFrame *divider(QFrame::Shape shape)
{
    auto *line = new QFrame;
    line->setFrameShape(shape);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

HistoryView::HistoryView(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_history(new HistoryModel(model, this))
    , m_files(new ChangedFilesModel(model, ChangedFilesModel::Source::changeset, this))
    , m_pages(new QStackedWidget)
    , m_empty(new EmptyState(tr("No History"), u"clock"_s, QString()))
    , m_noMatches(new EmptyState(tr("No Matches"), u"clock"_s, QString()))
    , m_searching(loadingPage(tr("Searching…")))
    , m_search(new QLineEdit)
    , m_list(new HistoryListView)
    , m_loadingRow(new QWidget)
    , m_loadingSpinner(new Spinner(14))
    , m_loadingText(new QLabel)
    , m_retry(new QPushButton(tr("Try Again")))
    , m_details(new QStackedWidget)
    , m_nothingSelected(new EmptyState(tr("Select a changeset"), u"clock"_s, QString()))
    , m_changesetPart(new QWidget)
    , m_header(new ChangesetHeader(model))
    , m_filesCount(new QLabel)
    , m_filesArea(new QStackedWidget)
    , m_fileList(makeList(tr("Changed files")))
    , m_diffView(new DiffView(
          model, settings,
          [&model] {
              const std::optional<WorkingFile> &file = model.diffSelection().selectedChangesetFile();
              return file ? file->path : QString();
          },
          QString()))
    , m_annotation(new AnnotationView(model, WorkspaceTab::history, m_diffView))
{
    m_list->setObjectName(u"history"_s);
    m_list->setAccessibleName(tr("History"));
    m_fileList->setObjectName(u"changesetFiles"_s);
    m_filesCount->setObjectName(u"changesetFileCount"_s);
    m_empty->setObjectName(u"noHistory"_s);
    m_nothingSelected->setObjectName(u"nothingSelected"_s);
    m_list->setModel(m_history);
    m_fileList->setModel(m_files);
    m_fileList->setItemDelegate(new ChangedFileDelegate(m_fileList));
    m_noMatches->setObjectName(u"noMatches"_s);
    m_search->setObjectName(u"historySearch"_s);
    m_search->setClearButtonEnabled(true);
    m_search->setAccessibleName(tr("Search history"));
    m_search->installEventFilter(this);
    m_loadingRow->setObjectName(u"historyLoadingRow"_s);
    m_loadingText->setForegroundRole(QPalette::PlaceholderText);
    m_loadingText->setWordWrap(true);
    m_retry->setObjectName(u"historyRetry"_s);
    auto *loadingLayout = new QHBoxLayout(m_loadingRow);
    loadingLayout->setContentsMargins(12, 6, 12, 6);
    loadingLayout->addWidget(m_loadingSpinner);
    loadingLayout->addWidget(m_loadingText, 1);
    loadingLayout->addWidget(m_retry);
    auto *listPage = new QWidget;
    auto *listLayout = new QVBoxLayout(listPage);
    listLayout->setContentsMargins(0, 0, 0, 0);
    listLayout->setSpacing(0);
    listLayout->addWidget(m_list, 1);
    listLayout->addWidget(m_loadingRow);
    m_pages->addWidget(m_empty);
    m_pages->addWidget(listPage);
    m_pages->addWidget(m_noMatches);
    m_pages->addWidget(m_searching);
    auto *listSide = new QWidget;
    auto *sideLayout = new QVBoxLayout(listSide);
    sideLayout->setContentsMargins(0, 0, 0, 0);
    sideLayout->setSpacing(0);
    auto *searchRow = new QHBoxLayout;
    searchRow->setContentsMargins(8, 6, 8, 6);
    searchRow->addWidget(m_search);
    sideLayout->addLayout(searchRow);
    sideLayout->addWidget(divider(QFrame::HLine));
    sideLayout->addWidget(m_pages, 1);

    auto *filesTitle = new QLabel(tr("Changed Files"));
    QFont titleFont = filesTitle->font();
    titleFont.setWeight(QFont::DemiBold);
    filesTitle->setFont(titleFont);
    QFont countFont = m_filesCount->font();
    countFont.setPointSizeF(countFont.pointSizeF() * 0.85);
    m_filesCount->setFont(countFont);
    m_filesCount->setForegroundRole(QPalette::PlaceholderText);
    auto *filesHeader = new QHBoxLayout;
    filesHeader->setContentsMargins(12, 6, 12, 4);
    filesHeader->setSpacing(6);
    filesHeader->addWidget(filesTitle);
    filesHeader->addWidget(m_filesCount);
    filesHeader->addStretch();

    auto *noFiles = new QLabel(tr("No changed files"));
    noFiles->setAlignment(Qt::AlignCenter);
    noFiles->setForegroundRole(QPalette::PlaceholderText);
    noFiles->setObjectName(u"noChangedFiles"_s);
    m_filesArea->addWidget(m_fileList);
    m_filesArea->addWidget(noFiles);

    auto *top = m_changesetPart;
    auto *topLayout = new QVBoxLayout(top);
    topLayout->setContentsMargins(0, 0, 0, 0);
    topLayout->setSpacing(0);
    topLayout->addWidget(m_header);
    topLayout->addWidget(divider(QFrame::HLine));
    topLayout->addLayout(filesHeader);
    topLayout->addWidget(m_filesArea, 1);
    auto *detailSplit = new QSplitter(Qt::Vertical);
    detailSplit->addWidget(top);
    detailSplit->addWidget(m_annotation);
    detailSplit->setChildrenCollapsible(false);
    detailSplit->setStretchFactor(0, 0);
    detailSplit->setStretchFactor(1, 1);
    detailSplit->setSizes({280, 420});

    m_details->addWidget(m_nothingSelected);
    m_details->addWidget(loadingPage(tr("Loading Changes…")));
    m_details->addWidget(detailSplit);

    auto *split = new QSplitter(Qt::Horizontal);
    split->addWidget(listSide);
    split->addWidget(m_details);
    split->setChildrenCollapsible(false);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({340, 600});
    listSide->setMinimumWidth(260);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(split);

    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &current) {
        if (m_updatingSelection || !current.isValid())
            return;
        m_model.selectChangeset(m_history->changesetAt(current.row()));
    });
    connect(m_fileList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) {
                if (m_updatingSelection || !current.isValid())
                    return;
                m_annotation->closeIfShown();
                m_model.selectChangesetFile(m_files->fileAt(current.row()));
            });
    offerRowMenus(m_fileList, [this](int row) { return fileContextMenuFor(row); });
    connect(m_history, &QAbstractItemModel::modelReset, this, [this] {
        updateState();
        showSelectedChangeset();
    });
    connect(m_history, &QAbstractItemModel::rowsInserted, this, [this] {
        updateState();
        showInsertedSelection();
    });
    const HistoryBrowser &browser = model.historyBrowser();
    connect(&browser, &HistoryBrowser::loadingChanged, this, [this] {
        updateState();
        updateLoadingRow();
    });
    connect(m_retry, &QPushButton::clicked, this, [this] { m_model.loadOlderHistory(); });
    QScrollBar *scrollBar = m_list->verticalScrollBar();
    connect(scrollBar, &QScrollBar::valueChanged, this, &HistoryView::loadOlderNearTheEnd);
    connect(scrollBar, &QScrollBar::rangeChanged, this, &HistoryView::loadOlderNearTheEnd);
    // Each word typed would run the tool; a pause, or Return, runs it once.
    m_searchDelay.setSingleShot(true);
    m_searchDelay.setInterval(400);
    connect(m_search, &QLineEdit::textEdited, this, [this] { m_searchDelay.start(); });
    connect(m_search, &QLineEdit::returnPressed, this, [this] {
        m_searchDelay.stop();
        m_model.searchHistory(m_search->text());
    });
    connect(&m_searchDelay, &QTimer::timeout, this, [this] { m_model.searchHistory(m_search->text()); });
    // The clear button empties the field without an edit.
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text.isEmpty() && !m_model.historyNavigation().searchText().isEmpty())
            m_model.searchHistory(QString());
    });
    connect(&model.historyNavigation(), &HistoryNavigation::searchTextChanged, this, &HistoryView::showSearchText);
    connect(m_files, &QAbstractItemModel::modelReset, this, [this] {
        updateDetail();
        showSelectedFile();
    });
    const DiffSelection &selection = model.diffSelection();
    connect(&selection, &DiffSelection::selectedChangesetChanged, this, [this] {
        updateDetail();
        showSelectedChangeset();
    });
    connect(&selection, &DiffSelection::selectedChangesetFileChanged, this, &HistoryView::showSelectedFile);
    connect(&selection, &DiffSelection::isLoadingChangesetFilesChanged, this, &HistoryView::updateDetail);
    connect(&selection, &DiffSelection::diffChanged, this, &HistoryView::updateDetail);
    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, &HistoryView::updateForRepository);

    m_dateTimer.setInterval(dateRefreshPeriod);
    connect(&m_dateTimer, &QTimer::timeout, m_history, &HistoryModel::ageDates);
    m_dateTimer.start();

    updateForRepository();
}

void HistoryView::setClock(HistoryModel::Clock clock, std::chrono::milliseconds period)
{
    m_history->setClock(std::move(clock));
    m_dateTimer.start(period);
}

QMenu *HistoryView::fileContextMenuFor(int row)
{
    auto *menu = new QMenu(this);
    if (row < 0 || row >= m_files->rowCount())
        return menu;
    const WorkingFile file = m_files->fileAt(row);
    QAction *annotate = menu->addAction(tr("Annotate"));
    // A file the changeset removed has no lines as of it.
    annotate->setEnabled(file.state != FileState::removed);
    connect(annotate, &QAction::triggered, this, [this, path = file.path] { m_model.annotate(path); });
    connect(menu->addAction(tr("Show History of This File")), &QAction::triggered, this,
            [this, path = file.path] { m_model.showFileHistory(path); });
    connect(menu->addAction(tr("Copy Relative File Path")), &QAction::triggered, this,
            [this, path = file.path] { m_model.copyPaths({path}); });
    return menu;
}

void HistoryView::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

bool HistoryView::eventFilter(QObject *watched, QEvent *event)
{
    // Escape leaves a search for the whole history, back in the list.
    if (watched == m_search && event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        m_searchDelay.stop();
        m_search->clear();
        m_model.searchHistory(QString());
        m_list->setFocus(Qt::OtherFocusReason);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void HistoryView::showSearchText()
{
    const QString &text = m_model.historyNavigation().searchText();
    if (m_search->text() != text && !m_searchDelay.isActive())
        m_search->setText(text);
}

// Within a screenful of the last row, the next older page loads.
void HistoryView::loadOlderNearTheEnd()
{
    const HistoryBrowser &browser = m_model.historyBrowser();
    const QScrollBar *scrollBar = m_list->verticalScrollBar();
    if (m_list->isVisible() && scrollBar->maximum() > 0
        && scrollBar->maximum() - scrollBar->value() <= scrollBar->pageStep() && browser.hasMore()
        && !browser.isLoading() && browser.failure().isEmpty())
        m_model.loadOlderHistory();
}

void HistoryView::updateLoadingRow()
{
    const HistoryBrowser &browser = m_model.historyBrowser();
    const bool failed = !browser.failure().isEmpty();
    m_loadingRow->setVisible((browser.isLoading() || failed) && m_history->rowCount() > 0);
    m_loadingSpinner->setVisible(browser.isLoading());
    m_retry->setVisible(failed && !browser.isLoading());
    m_loadingText->setText(
        failed ? tr("Older %1 could not be loaded: %2").arg(m_model.traits().changesets, browser.failure())
               : tr("Loading older %1…").arg(m_model.traits().changesets));
}

// A page that brings the selected changeset's row (going to it, or keeping it
// through a refresh) selects the row; other pages leave the place alone.
void HistoryView::showInsertedSelection()
{
    if (!m_list->currentIndex().isValid())
        showSelectedChangeset();
}

void HistoryView::updateForRepository()
{
    const KindTraits words = m_model.traits();
    m_search->setPlaceholderText(tr("Search %1: words, author:, file:, hash").arg(words.changesets));

    m_empty->setDetail(tr("This repository has no %1 yet.").arg(words.changesets));
    m_nothingSelected->setTitle(tr("Select a %1").arg(words.changeset));
    m_nothingSelected->setDetail(tr("Choose a %1 to see its files and changes.").arg(words.changeset));
    m_diffView->setPlaceholder(tr("Select a file changed by this %1.").arg(words.changeset));
    updateState();
    updateDetail();
}

void HistoryView::updateState()
{
    const HistoryBrowser &browser = m_model.historyBrowser();
    const bool empty = m_history->rowCount() == 0;
    const bool searching = !browser.filter().isEmpty();
    if (!empty)
        m_pages->setCurrentIndex(1);
    else if (!searching)
        m_pages->setCurrentWidget(m_empty);
    else
        m_pages->setCurrentWidget(browser.isLoading() ? m_searching : static_cast<QWidget *>(m_noMatches));
    // A search the tool could not run says why in place of its matches.
    const bool failed = !browser.failure().isEmpty();
    m_noMatches->setTitle(failed ? tr("Search Failed") : tr("No Matches"));
    m_noMatches->setDetail(failed ? browser.failure()
                                  : tr("No %1 match this search.").arg(m_model.traits().changesets));
    // Without history there is nothing to detail: one empty state, not two.
    m_details->setVisible(!empty);
    updateLoadingRow();
}

void HistoryView::updateDetail()
{
    const DiffSelection &selection = m_model.diffSelection();
    const std::optional<Changeset> &changeset = selection.selectedChangeset();
    const qsizetype fileCount = selection.changesetFiles().size();
    Detail detail = Detail::changeset;
    // A comparison shows alone, under no changeset's header.
    const bool comparing = selection.comparisonTitle().has_value();
    m_changesetPart->setVisible(!comparing);
    if (comparing)
        detail = Detail::changeset;
    else if (!changeset)
        detail = Detail::nothingSelected;
    else if (selection.isLoadingChangesetFiles() && fileCount == 0)
        detail = Detail::loading;
    m_details->setCurrentIndex(static_cast<int>(detail));
    if (detail != Detail::changeset || comparing)
        return;
    m_header->showChangeset(*changeset, m_model.traits());
    m_filesCount->setText(QString::number(fileCount));
    m_filesArea->setCurrentIndex(fileCount == 0 ? 1 : 0);
}

void HistoryView::showSelectedChangeset()
{
    const std::optional<Changeset> &changeset = m_model.diffSelection().selectedChangeset();
    const int row = changeset ? m_history->rowOf(changeset->node) : -1;
    m_updatingSelection = true;
    if (row < 0) {
        m_list->selectionModel()->clear();
    } else {
        const QModelIndex index = m_history->index(row);
        m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        m_list->scrollTo(index);
    }
    m_updatingSelection = false;
}

void HistoryView::showSelectedFile()
{
    const std::optional<WorkingFile> &file = m_model.diffSelection().selectedChangesetFile();
    const int row = file ? m_files->rowOf(file->path) : -1;
    m_updatingSelection = true;
    if (row < 0)
        m_fileList->selectionModel()->clear();
    else
        m_fileList->selectionModel()->setCurrentIndex(m_files->index(row), QItemSelectionModel::ClearAndSelect);
    m_updatingSelection = false;
}

} // namespace tillery
