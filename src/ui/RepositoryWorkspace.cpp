#include "ui/RepositoryWorkspace.h"

#include "model/AppModel.h"
#include "ui/AnnotationView.h"
#include "ui/ChangesView.h"
#include "ui/HistoryView.h"
#include "ui/ShelvesView.h"
#include "ui/WorkspaceTabHeader.h"
#include "ui/WorkspaceToolbar.h"

#include <QFrame>
#include <QStackedWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

RepositoryWorkspace::RepositoryWorkspace(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_toolbar(new WorkspaceToolbar(model))
    , m_tabs(new WorkspaceTabHeader(model))
    , m_pages(new QStackedWidget)
    , m_changes(new ChangesView(model, settings))
    , m_history(new HistoryView(model, settings))
    , m_shelves(new ShelvesView(model, settings))
{
    m_pages->addWidget(m_changes);
    m_pages->addWidget(m_history);
    m_pages->addWidget(m_shelves);

    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_tabs);
    layout->addWidget(divider);
    layout->addWidget(m_pages, 1);

    for (AnnotationView *annotation : {m_changes->annotationView(), m_history->annotationView()})
        connect(annotation, &AnnotationView::changesetClicked, this,
                [this](const QString &node) { m_model.showChangesetInHistory(node); });
    connect(&model.workspace(), &Workspace::tabChanged, this, &RepositoryWorkspace::update);
    update();
}

QWidget *RepositoryWorkspace::currentPage() const
{
    return m_pages->currentWidget();
}

void RepositoryWorkspace::update()
{
    switch (m_model.workspace().tab()) {
    case WorkspaceTab::changes:
        m_pages->setCurrentWidget(m_changes);
        break;
    case WorkspaceTab::history:
        m_pages->setCurrentWidget(m_history);
        break;
    case WorkspaceTab::shelves:
        m_pages->setCurrentWidget(m_shelves);
        break;
    }
}

} // namespace tillery
