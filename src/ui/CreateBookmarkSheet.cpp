#include "ui/CreateBookmarkSheet.h"

#include "model/AppModel.h"
#include "model/BranchNames.h"
#include "ui/SheetParts.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

CreateBookmarkSheet::CreateBookmarkSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_name(new QLineEdit)
    , m_problem(new ProblemLabel)
    , m_create(new QPushButton(tr("Create")))
{
    const KindTraits words = model.traits();
    const RepositoryKind kind = words.kind;
    const QString nameLabel = tr("%1 name").arg(capitalized(words.bookmark));
    setWindowTitle(tr("Create a Bookmark"));
    m_name->setPlaceholderText(nameLabel);
    m_name->setAccessibleName(nameLabel);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(m_create, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    m_create->setDefault(true);
    m_create->setEnabled(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_create, &QPushButton::clicked, this, [this, &model] {
        model.createBookmark(m_name->text());
        accept();
    });
    const QList<Bookmark> existing = model.workspace().snapshot().bookmarks;
    connect(m_name, &QLineEdit::textChanged, this, [this, kind, existing](const QString &name) {
        const std::optional<QString> problem = branchNameProblem(name, kind, existing);
        m_problem->setProblem(name.isEmpty() ? QString() : problem.value_or(QString()));
        m_create->setEnabled(!problem);
    });

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(sheetTitle(tr("Create a Bookmark")));
    layout->addWidget(new QLabel(words.newBookmarkExplanation));
    layout->addWidget(m_name);
    layout->addWidget(m_problem);
    layout->addWidget(secondaryLabel(words.newBookmarkNote));
    layout->addWidget(buttons);
    setMinimumWidth(440);
}

} // namespace tillery
