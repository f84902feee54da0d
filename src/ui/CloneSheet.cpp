#include "ui/CloneSheet.h"

#include "model/AppModel.h"
#include "model/CloneRequest.h"
#include "ui/SheetParts.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

CloneSheet::CloneSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
    , m_source(new QLineEdit)
    , m_parent(new QLineEdit(QDir::homePath()))
    , m_name(new QLineEdit)
    , m_kind(new QComboBox)
    , m_problem(new ProblemLabel)
    , m_clone(new QPushButton(tr("Clone")))
{
    setWindowTitle(tr("Clone a Repository"));
    m_source->setPlaceholderText(tr("https://example.com/project or a local path"));
    m_source->setAccessibleName(tr("Address"));
    m_parent->setAccessibleName(tr("Into folder"));
    m_name->setAccessibleName(tr("Folder name"));
    m_kind->setAccessibleName(tr("Kind"));
    m_kind->addItem(tr("Mercurial"));
    m_kind->addItem(tr("Git"));
    auto *choose = new QPushButton(tr("Choose…"));
    choose->setAccessibleName(tr("Choose Clone Destination"));
    connect(choose, &QPushButton::clicked, this, [this] {
        const QString folder =
            QFileDialog::getExistingDirectory(this, tr("Choose Clone Destination"), m_parent->text());
        if (!folder.isEmpty())
            m_parent->setText(folder);
    });
    connect(m_source, &QLineEdit::textChanged, this, [this](const QString &address) {
        if (!m_kindChosen)
            m_kind->setCurrentIndex(guessCloneKind(address) == RepositoryKind::git ? 1 : 0);
        if (!m_nameEdited)
            m_name->setText(cloneFolderName(address));
        update();
    });
    connect(m_kind, &QComboBox::activated, this, [this] { m_kindChosen = true; });
    connect(m_name, &QLineEdit::textEdited, this, [this] {
        m_nameEdited = true;
        update();
    });
    connect(m_parent, &QLineEdit::textChanged, this, &CloneSheet::update);

    auto *folderRow = new QHBoxLayout;
    folderRow->addWidget(m_parent, 1);
    folderRow->addWidget(choose);
    auto *form = new QFormLayout;
    form->addRow(tr("Address:"), m_source);
    form->addRow(tr("Into folder:"), folderRow);
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("Kind:"), m_kind);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(m_clone, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    m_clone->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_clone, &QPushButton::clicked, this, [this] {
        m_model.clone(m_source->text().trimmed(), QDir(m_parent->text()).filePath(m_name->text().trimmed()),
                      m_kind->currentIndex() == 1 ? RepositoryKind::git : RepositoryKind::mercurial);
        accept();
    });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(sheetTitle(tr("Clone a Repository")));
    layout->addLayout(form);
    layout->addWidget(m_problem);
    layout->addWidget(buttons);
    setMinimumWidth(520);
    update();
}

void CloneSheet::update()
{
    const QString reason = cloneProblem(m_source->text(), m_parent->text(), m_name->text());
    // Nothing typed yet is not a problem worth a red line.
    m_problem->setProblem(m_source->text().isEmpty() ? QString() : reason);
    m_clone->setEnabled(reason.isEmpty());
}

} // namespace tillery
