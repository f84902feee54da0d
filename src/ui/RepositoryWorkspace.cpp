#include "ui/RepositoryWorkspace.h"

#include "model/AppModel.h"
#include "ui/ChangesView.h"
#include "ui/EmptyState.h"
#include "ui/WorkspaceTabHeader.h"

#include <QFileInfo>
#include <QFrame>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

RepositoryWorkspace::RepositoryWorkspace(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_title(new QLabel)
    , m_tabs(new WorkspaceTabHeader(model))
    , m_pages(new QStackedWidget)
    , m_changes(new ChangesView(model, settings))
    , m_history(new EmptyState(u"No History"_s, u"clock"_s, QString()))
{
    QFont titleFont = m_title->font();
    titleFont.setWeight(QFont::DemiBold);
    titleFont.setPointSizeF(titleFont.pointSizeF() * 1.15);
    m_title->setFont(titleFont);
    m_title->setContentsMargins(12, 8, 12, 0);
    m_pages->addWidget(m_changes);
    m_pages->addWidget(m_history);

    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(m_tabs);
    layout->addWidget(divider);
    layout->addWidget(m_pages, 1);

    connect(&model.workspace(), &Workspace::tabChanged, this, &RepositoryWorkspace::update);
    connect(&model.workspace(), &Workspace::selectedRepositoryChanged, this, &RepositoryWorkspace::update);
    connect(&model.workspace(), &Workspace::snapshotChanged, this, &RepositoryWorkspace::update);
    update();
}

QWidget *RepositoryWorkspace::currentPage() const
{
    return m_pages->currentWidget();
}

void RepositoryWorkspace::update()
{
    const std::optional<Repository> &repository = m_model.workspace().selectedRepository();
    m_title->setText(repository ? QFileInfo(repository->path).fileName() : QString());
    const bool git = repository && repository->kind == RepositoryKind::git;
    m_history->setDetail(git ? u"This repository has no commits yet."_s : u"This repository has no changesets yet."_s);
    m_pages->setCurrentWidget(m_model.workspace().tab() == WorkspaceTab::changes ? static_cast<QWidget *>(m_changes)
                                                                                 : m_history);
}

} // namespace tillery
