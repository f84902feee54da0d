#include "ui/RepositorySettingsSheet.h"

#include "model/AppModel.h"
#include "ui/IconWell.h"
#include "ui/Icons.h"
#include "ui/SheetParts.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

QString RepositorySettingsSheet::shownAddress(const AppModel &model)
{
    return model.shownRemoteAddress();
}

RepositorySettingsSheet::RepositorySettingsSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
    , m_repository(model.workspace().selectedRepository())
    , m_address(new QLineEdit(shownAddress(model)))
    , m_save(new QPushButton(tr("Save")))
    , m_well(new IconWell)
    , m_removeIcon(new QPushButton(tr("Remove Icon")))
    , m_iconProblem(new ProblemLabel)
{
    const KindTraits words = model.traits();
    setWindowTitle(tr("Repository Settings"));
    m_address->setPlaceholderText(words.remoteAddressExample);
    m_address->setAccessibleName(tr("%1 remote address").arg(capitalized(words.remoteName)));
    m_address->setMinimumWidth(360);

    auto *chooseIcon = new QPushButton(tr("Choose Image…"));
    connect(chooseIcon, &QPushButton::clicked, m_well, &IconWell::choose);
    connect(m_well, &IconWell::picked, this, &RepositorySettingsSheet::takePicture);
    connect(m_removeIcon, &QPushButton::clicked, this, [this] {
        if (m_repository)
            m_model.removeRepositoryIcon(m_repository->path);
        m_iconProblem->setProblem(QString());
    });
    connect(&model.icons(), &RepositoryIcons::iconsChanged, this, &RepositorySettingsSheet::showIcon);

    auto *iconButtons = new QVBoxLayout;
    iconButtons->addWidget(chooseIcon);
    iconButtons->addWidget(m_removeIcon);
    iconButtons->addStretch();
    auto *iconRow = new QHBoxLayout;
    iconRow->addWidget(m_well);
    iconRow->addSpacing(8);
    iconRow->addLayout(iconButtons);
    iconRow->addStretch();

    auto *buttons = new QDialogButtonBox;
    buttons->addButton(m_save, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    m_save->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const QString shown = m_address->text();
    connect(m_save, &QPushButton::clicked, this, [this, shown] {
        // An address left as it was shown is not saved again.
        if (m_address->text().trimmed() != shown.trimmed())
            m_model.saveRemotePath(m_address->text());
        accept();
    });

    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(8);
    layout->addWidget(sheetTitle(tr("Repository Settings")));
    if (m_repository)
        layout->addWidget(quietNameLabel(QFileInfo(m_repository->path).fileName()));
    layout->addSpacing(6);
    layout->addWidget(new QLabel(tr("Remote “%1”").arg(words.remoteName)));
    layout->addWidget(m_address);
    layout->addWidget(
        secondaryLabel(tr("Set the %1 `%2` %3 used by Pull and Push. HTTPS, SSH, and local paths are supported.")
                           .arg(words.toolName, words.remoteName, words.remoteNoun)));
    layout->addSpacing(6);
    layout->addWidget(new QLabel(tr("Icon")));
    layout->addLayout(iconRow);
    layout->addWidget(m_iconProblem);
    layout->addWidget(buttons);
    showIcon();
}

void RepositorySettingsSheet::takePicture(const QString &pictureFile)
{
    if (!m_repository)
        return;
    m_model.setRepositoryIcon(m_repository->path, pictureFile, [sheet = QPointer(this)](bool taken) {
        if (sheet)
            sheet->m_iconProblem->setProblem(taken ? QString() : tr("Choose a readable image file."));
    });
}

void RepositorySettingsSheet::showIcon()
{
    const QImage picture = m_repository ? m_model.icons().icons().value(m_repository->path) : QImage();
    m_well->showPicture(picture, repositoryKindIcon(m_repository ? m_repository->kind : RepositoryKind::mercurial));
    m_removeIcon->setEnabled(!picture.isNull());
}

} // namespace tillery
