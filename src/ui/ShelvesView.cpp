#include "ui/ShelvesView.h"

#include "model/AppModel.h"
#include "ui/ChangedFileDelegate.h"
#include "ui/ChangedFilesModel.h"
#include "ui/DiffView.h"
#include "ui/EmptyState.h"
#include "ui/ShelfListModel.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

constexpr int ageRefreshMilliseconds = 60 * 1000;

// A shelf's title, with its age at the right in the quieter colour.
class ShelfRowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QString age = index.data(ShelfListModel::AgeRole).toString();
        const int ageWidth = option.fontMetrics.horizontalAdvance(age) + 16;
        QStyleOptionViewItem titleOption = option;
        titleOption.rect.setRight(option.rect.right() - ageWidth);
        QStyledItemDelegate::paint(painter, titleOption, index);
        painter->save();
        const bool selected = option.state & QStyle::State_Selected;
        if (selected)
            painter->fillRect(option.rect.adjusted(option.rect.width() - ageWidth, 0, 0, 0),
                              option.palette.highlight());
        painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::PlaceholderText));
        painter->drawText(option.rect.adjusted(0, 0, -8, 0), Qt::AlignRight | Qt::AlignVCenter, age);
        painter->restore();
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(size.height(), option.fontMetrics.height() + 10));
        return size;
    }
};

QListView *makeList(const QString &name, const QString &accessibleName)
{
    auto *list = new QListView;
    list->setObjectName(name);
    list->setAccessibleName(accessibleName);
    list->setUniformItemSizes(true);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setFrameShape(QFrame::NoFrame);
    return list;
}

QFrame *horizontalDivider()
{
    auto *line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

} // namespace

ShelvesView::ShelvesView(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_shelves(new ShelfListModel(model, this))
    , m_files(new ChangedFilesModel(model, ChangedFilesModel::Source::shelf, this))
    , m_pages(new QStackedWidget)
    , m_empty(new EmptyState(QString(), u"archivebox"_s, QString()))
    , m_list(makeList(u"shelves"_s, tr("Shelves")))
    , m_fileList(makeList(u"shelfFiles"_s, tr("Files")))
    , m_filesTitle(new QLabel(tr("Files")))
    , m_restore(new QPushButton(tr("Restore")))
    , m_restoreAndDelete(new QPushButton(tr("Restore and Delete")))
    , m_delete(new QPushButton(tr("Delete…")))
    , m_diffView(new DiffView(
          model, settings,
          [&model] {
              const std::optional<WorkingFile> &file = model.shelfSelection().selectedFile();
              return file ? file->path : QString();
          },
          QString()))
{
    m_empty->setObjectName(u"noShelves"_s);
    m_restore->setObjectName(u"restoreShelf"_s);
    m_restoreAndDelete->setObjectName(u"restoreAndDeleteShelf"_s);
    m_delete->setObjectName(u"deleteShelf"_s);
    m_list->setModel(m_shelves);
    m_list->setItemDelegate(new ShelfRowDelegate(m_list));
    m_fileList->setModel(m_files);
    m_fileList->setItemDelegate(new ChangedFileDelegate(m_fileList));
    QFont titleFont = m_filesTitle->font();
    titleFont.setWeight(QFont::DemiBold);
    m_filesTitle->setFont(titleFont);

    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(10, 6, 10, 8);
    buttons->addWidget(m_restore);
    buttons->addWidget(m_restoreAndDelete);
    buttons->addStretch();
    buttons->addWidget(m_delete);
    auto *filesHeader = new QHBoxLayout;
    filesHeader->setContentsMargins(12, 6, 12, 4);
    filesHeader->addWidget(m_filesTitle);
    auto *shelfPart = new QWidget;
    auto *shelfLayout = new QVBoxLayout(shelfPart);
    shelfLayout->setContentsMargins(0, 0, 0, 0);
    shelfLayout->setSpacing(0);
    shelfLayout->addLayout(filesHeader);
    shelfLayout->addWidget(m_fileList, 1);
    shelfLayout->addWidget(horizontalDivider());
    shelfLayout->addLayout(buttons);
    auto *side = new QSplitter(Qt::Vertical);
    side->addWidget(m_list);
    side->addWidget(shelfPart);
    side->setChildrenCollapsible(false);
    side->setSizes({260, 300});

    auto *split = new QSplitter(Qt::Horizontal);
    split->addWidget(side);
    split->addWidget(m_diffView);
    split->setChildrenCollapsible(false);
    split->setStretchFactor(0, 0);
    split->setStretchFactor(1, 1);
    split->setSizes({340, 600});
    side->setMinimumWidth(260);
    m_pages->addWidget(m_empty);
    m_pages->addWidget(split);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_pages);

    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex &current) {
        if (!m_updatingSelection && current.isValid())
            m_model.selectShelf(m_shelves->shelfAt(current.row()));
    });
    connect(m_fileList->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex &current) {
                if (!m_updatingSelection && current.isValid())
                    m_model.selectShelfFile(m_files->fileAt(current.row()));
            });
    connect(m_restore, &QPushButton::clicked, this, [this] { m_model.restoreShelf(true); });
    connect(m_restoreAndDelete, &QPushButton::clicked, this, [this] { m_model.restoreShelf(false); });
    connect(m_delete, &QPushButton::clicked, this, [this] { m_model.deleteShelf(); });
    const ShelfSelection &selection = model.shelfSelection();
    for (auto signal : {&ShelfSelection::selectedShelfChanged, &ShelfSelection::selectedFileChanged})
        connect(&selection, signal, this, &ShelvesView::showSelection);
    connect(m_shelves, &QAbstractItemModel::modelReset, this, &ShelvesView::showSelection);
    connect(m_files, &QAbstractItemModel::modelReset, this, &ShelvesView::showSelection);
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &ShelvesView::update);
    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, &ShelvesView::update);
    connect(&model.activityState(), &ActivityState::isBusyChanged, this, &ShelvesView::update);
    m_ageTimer.setInterval(ageRefreshMilliseconds);
    connect(&m_ageTimer, &QTimer::timeout, m_list->viewport(), qOverload<>(&QWidget::update));
    m_ageTimer.start();
    update();
}

void ShelvesView::update()
{
    const KindTraits traits = m_model.traits();
    const bool none = m_model.workspace().snapshot().shelves.isEmpty();
    m_empty->setTitle(tr("No %1").arg(capitalized(traits.shelves)));
    m_empty->setDetail(byKind(traits.kind,
                              tr("Changes set aside with “Shelve Selected Files” on the Changes page show here."),
                              tr("Changes set aside with “Stash Selected Files” on the Changes page show here.")));
    m_list->setAccessibleName(capitalized(traits.shelves));
    m_pages->setCurrentIndex(none ? 0 : 1);
    const bool canAct = m_model.shelfSelection().selectedShelf() && !m_model.activityState().isBusy();
    for (QPushButton *button : {m_restore, m_restoreAndDelete, m_delete})
        button->setEnabled(canAct);
}

void ShelvesView::showSelection()
{
    m_updatingSelection = true;
    const std::optional<Shelf> &shelf = m_model.shelfSelection().selectedShelf();
    const int row = shelf ? m_shelves->rowOf(shelf->id) : -1;
    if (row >= 0)
        m_list->setCurrentIndex(m_shelves->index(row));
    else
        m_list->clearSelection();
    const std::optional<WorkingFile> &file = m_model.shelfSelection().selectedFile();
    const int fileRow = file ? m_files->rowOf(file->path) : -1;
    if (fileRow >= 0)
        m_fileList->setCurrentIndex(m_files->index(fileRow));
    m_filesTitle->setText(m_files->rowCount() > 0 ? tr("Files (%1)").arg(m_files->rowCount()) : tr("Files"));
    m_updatingSelection = false;
    update();
}

} // namespace tillery
