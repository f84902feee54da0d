#include "ui/CommitBox.h"

#include "model/AppModel.h"
#include "ui/ButtonStyle.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

CommitBox::CommitBox(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_summary(new QLineEdit)
    , m_description(new QPlainTextEdit)
    , m_amend(new QCheckBox(tr("Amend Last Commit")))
    , m_commit(new QPushButton)
    , m_commitAction(new QAction(this))
{
    m_summary->setPlaceholderText(tr("Summary (required)"));
    m_summary->setAccessibleName(tr("Summary"));
    m_description->setAccessibleName(tr("Description"));
    m_description->setMinimumHeight(64);
    m_description->setTabChangesFocus(true);
    frameDescription();
    m_amend->setObjectName(u"amendLastCommit"_s);
    m_amend->setToolTip(tr("Replace the last commit with one that also has these changes, under the message "
                           "above."));
    m_commit->setObjectName(u"commitButton"_s);
    m_commit->setDefault(true);
    followButtonAppearance(m_commit, settings, true);

    // Ctrl is the command key on macOS. The page adds the action too, so
    // that the shortcut also works from the file list.
    m_commitAction->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Return), QKeySequence(Qt::CTRL | Qt::Key_Enter)});
    m_commitAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(m_commitAction);
    connect(m_commitAction, &QAction::triggered, this, [this] {
        if (m_model.canCommit())
            m_model.commit();
    });
    connect(m_commit, &QPushButton::clicked, &model, [&model] { model.commit(); });
    connect(m_amend, &QCheckBox::toggled, &model, [&model](bool on) { model.setAmendingLastCommit(on); });
    connect(&model.workspace(), &Workspace::amendsLastCommitChanged, this, [this](bool on) {
        m_amend->setChecked(on);
        update();
    });

    connect(m_summary, &QLineEdit::textChanged, &model,
            [&model](const QString &text) { model.setCommitSummary(text); });
    connect(m_description, &QPlainTextEdit::textChanged, this,
            [this] { m_model.setCommitDescription(m_description->toPlainText()); });
    connect(&model.workspace(), &Workspace::commitSummaryChanged, this, [this](const QString &text) {
        if (m_summary->text() != text)
            m_summary->setText(text);
        update();
    });
    connect(&model.workspace(), &Workspace::commitDescriptionChanged, this, [this](const QString &text) {
        if (m_description->toPlainText() != text)
            m_description->setPlainText(text);
    });
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &CommitBox::update);
    connect(&model.diffSelection(), &DiffSelection::selectedFilePathsChanged, this, &CommitBox::update);
    connect(&model.chosenLines(), &ChosenLines::changed, this, &CommitBox::update);
    connect(&model.activityState(), &ActivityState::isBusyChanged, this, &CommitBox::update);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(8);
    layout->addWidget(m_summary);
    layout->addWidget(m_description);
    layout->addWidget(m_amend);
    layout->addWidget(m_commit);
    m_summary->setText(model.workspace().commitSummary());
    m_description->setPlainText(model.workspace().commitDescription());
    update();
}

void CommitBox::frameDescription()
{
    // Style sheets take the palette's colours when set, so they are set again
    // when the palette changes.
    m_description->setStyleSheet(u"QPlainTextEdit { border: 1px solid palette(mid); border-radius: 5px;"
                                 " background: palette(base); color: palette(text); }"_s);
}

void CommitBox::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        frameDescription();
}

void CommitBox::update()
{
    qsizetype marked = 0;
    const QSet<QString> &paths = m_model.diffSelection().selectedFilePaths();
    for (const WorkingFile &file : m_model.workspace().snapshot().files)
        marked += paths.contains(file.path) || m_model.chosenLines().fileState(file.path) != Qt::Unchecked ? 1 : 0;
    const int count = static_cast<int>(marked);
    if (!m_model.workspace().amendsLastCommit())
        m_commit->setText(tr("Commit %n File(s)", nullptr, count));
    else
        m_commit->setText(count == 0 ? tr("Amend Last Commit") : tr("Amend with %n File(s)", nullptr, count));
    m_commit->setEnabled(m_model.canCommit());
    const bool hasCommit = !m_model.workspace().snapshot().workingParent.isEmpty();
    m_amend->setEnabled(m_amend->isChecked() || (hasCommit && !m_model.activityState().isBusy()));
}

} // namespace tillery
