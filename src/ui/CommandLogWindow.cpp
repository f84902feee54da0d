#include "ui/CommandLogWindow.h"

#include "model/AppModel.h"
#include "ui/CommandLogModel.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace tillery {

CommandLogWindow::CommandLogWindow(AppModel &model, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_model(model)
    , m_rows(new CommandLogModel(model.commandLog(), this))
    , m_filtered(new QSortFilterProxyModel(this))
    , m_filter(new QLineEdit)
    , m_table(new QTableView)
{
    setObjectName(QStringLiteral("commandLogWindow"));
    setWindowTitle(tr("Command Log"));
    resize(960, 440);

    m_filtered->setSourceModel(m_rows);
    m_filtered->setFilterRole(CommandLogModel::filterTextRole);
    m_filtered->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setObjectName(QStringLiteral("commandLogFilter"));
    m_filter->setPlaceholderText(tr("Filter by command or repository"));
    m_filter->setAccessibleName(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, m_filtered, &QSortFilterProxyModel::setFilterFixedString);

    m_table->setObjectName(QStringLiteral("commandLogTable"));
    m_table->setAccessibleName(tr("Commands"));
    m_table->setModel(m_filtered);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setWordWrap(false);
    m_table->setAlternatingRowColors(true);
    m_table->verticalHeader()->hide();
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView *header = m_table->horizontalHeader();
    header->setSectionResizeMode(QHeaderView::ResizeToContents);
    header->setSectionResizeMode(CommandLogModel::command, QHeaderView::Stretch);
    header->setSectionResizeMode(CommandLogModel::repository, QHeaderView::Interactive);
    header->resizeSection(CommandLogModel::repository, 200);
    m_table->setTextElideMode(Qt::ElideMiddle);

    auto *copy = new QAction(tr("Copy"), m_table);
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(copy, &QAction::triggered, this, &CommandLogWindow::copySelected);
    m_table->addAction(copy);
    m_table->setContextMenuPolicy(Qt::ActionsContextMenu);

    auto *copyButton = new QPushButton(tr("Copy"));
    copyButton->setObjectName(QStringLiteral("commandLogCopy"));
    connect(copyButton, &QPushButton::clicked, this, &CommandLogWindow::copySelected);
    auto *clearButton = new QPushButton(tr("Clear"));
    clearButton->setObjectName(QStringLiteral("commandLogClear"));
    connect(clearButton, &QPushButton::clicked, this, [&model] { model.commandLog().clear(); });
    const auto updateCopy = [this, copy, copyButton] {
        const bool any = m_table->selectionModel()->hasSelection();
        copy->setEnabled(any);
        copyButton->setEnabled(any);
    };
    connect(m_table->selectionModel(), &QItemSelectionModel::selectionChanged, this, updateCopy);
    connect(m_filtered, &QAbstractItemModel::modelReset, this, updateCopy);
    updateCopy();

    auto *bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(clearButton);
    bottom->addWidget(copyButton);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_filter);
    layout->addWidget(m_table);
    layout->addLayout(bottom);
}

QString CommandLogWindow::selectedCommands() const
{
    QList<int> rows;
    for (const QModelIndex &index : m_table->selectionModel()->selectedRows())
        rows.append(m_filtered->mapToSource(index).row());
    // Rows are newest first.
    std::sort(rows.begin(), rows.end(), std::greater<>());
    QString text;
    for (const int row : rows)
        text += m_rows->index(row, 0).data(CommandLogModel::repeatableTextRole).toString() + u'\n';
    return text;
}

void CommandLogWindow::copySelected()
{
    const QString text = selectedCommands();
    if (!text.isEmpty())
        m_model.copyText(text);
}

CommandLogWindow *showCommandLog(AppModel &model, QWidget *owner)
{
    auto *window = owner->findChild<CommandLogWindow *>(QString(), Qt::FindDirectChildrenOnly);
    if (!window) {
        window = new CommandLogWindow(model, owner);
        window->setAttribute(Qt::WA_DeleteOnClose);
    }
    window->show();
    window->raise();
    window->activateWindow();
    return window;
}

} // namespace tillery
