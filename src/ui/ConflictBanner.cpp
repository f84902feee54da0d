#include "ui/ConflictBanner.h"

#include "model/AppModel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tillery {

ConflictBanner::ConflictBanner(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_text(new QLabel)
    , m_continue(new QPushButton(tr("Continue")))
    , m_abort(new QPushButton(tr("Abort…")))
{
    setObjectName(u"conflictBanner"_s);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    m_text->setObjectName(u"conflictText"_s);
    m_continue->setObjectName(u"continueOperation"_s);
    m_abort->setObjectName(u"abortOperation"_s);
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 6, 10, 6);
    layout->addWidget(m_text, 1);
    layout->addWidget(m_continue);
    layout->addWidget(m_abort);
    connect(m_continue, &QPushButton::clicked, this, [this] { m_model.continueOperation(); });
    connect(m_abort, &QPushButton::clicked, this, [this] { m_model.abortOperation(); });
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &ConflictBanner::update);
    connect(&model.activityState(), &ActivityState::isBusyChanged, this, &ConflictBanner::update);
    update();
}

void ConflictBanner::update()
{
    const ConflictActions &conflicts = m_model.conflicts();
    const OperationInProgress operation = conflicts.operation();
    setVisible(operation != OperationInProgress::none);
    if (operation == OperationInProgress::none)
        return;
    const QString title = operationTitle(operation, m_model.traits().kind);
    const qsizetype unresolved = conflicts.unresolvedFiles().size();
    QString state = tr("no conflicts left: continue when ready");
    if (unresolved > 0)
        state = tr("%n unresolved file(s)", nullptr, static_cast<int>(unresolved));
    m_text->setText(tr("%1 in progress — %2").arg(title, state));
    setAccessibleName(m_text->text());
    m_continue->setText(operation == OperationInProgress::merge ? tr("Commit Merge") : tr("Continue %1").arg(title));
    m_continue->setEnabled(conflicts.canContinue());
    m_abort->setText(tr("Abort %1…").arg(title));
    m_abort->setEnabled(!m_model.activityState().isBusy());
}

void ConflictBanner::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    QColor tint(0xE0, 0x8A, 0x00);
    tint.setAlphaF(0.16);
    painter.fillRect(rect(), tint);
}

} // namespace tillery
