#include "ui/GeneralSettings.h"

#include "model/AppModel.h"
#include "model/CommitIdentity.h"
#include "ui/SheetParts.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

GeneralSettings::GeneralSettings(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_userName(new QLineEdit(model.workspace().commitUsername()))
    , m_gitNote(new ProblemLabel)
{
    m_userName->setPlaceholderText(tr("Full Name <address>"));
    m_userName->setAccessibleName(tr("Commit author"));
    connect(m_userName, &QLineEdit::textEdited, &model, [this](const QString &name) {
        m_model.setCommitUsername(name);
        updateNote();
    });
    connect(&model.workspace(), &Workspace::commitUsernameChanged, this, [this](const QString &name) {
        if (m_userName->text() != name)
            m_userName->setText(name);
        updateNote();
    });

    auto *form = new QFormLayout;
    form->addRow(tr("Commit author:"), m_userName);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(
        secondaryLabel(u"Used for the commits you make in Tillery. Leave it empty to use the name set "
                       "in your Mercurial or Git configuration. Git needs the form Full Name <address>."_s));
    layout->addWidget(m_gitNote);
    layout->addStretch();
    updateNote();
}

void GeneralSettings::updateNote()
{
    const QString name = m_userName->text().trimmed();
    m_gitNote->setProblem(
        name.isEmpty() || isUsableGitIdentity(name)
            ? QString()
            : tr("Git commits will use Git's own configuration until the name reads Full Name <address>."));
}

} // namespace tillery
