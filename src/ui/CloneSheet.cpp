#include "ui/CloneSheet.h"

#include "model/AppModel.h"
#include "process/RemoteAddress.h"
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

namespace {

bool isGitHost(const QString &host)
{
    static const QStringList hosts{u"github.com"_s, u"gitlab.com"_s, u"codeberg.org"_s, u"git.sr.ht"_s};
    return hosts.contains(host.toLower());
}

// A local folder that holds a Git repository, bare or with a working copy.
bool isLocalGitRepository(const QString &path)
{
    const QDir folder(path);
    return folder.exists(u".git"_s) || (QFileInfo(folder.filePath(u"HEAD"_s)).isFile() && folder.exists(u"objects"_s));
}

} // namespace

RepositoryKind CloneSheet::guessKind(const QString &address)
{
    const QString trimmed = address.trimmed();
    if (trimmed.endsWith(u".git"_s) || trimmed.endsWith(u".git/"_s) || trimmed.startsWith(u"git@"_s)
        || trimmed.startsWith(u"git://"_s))
        return RepositoryKind::git;
    const QUrl url(trimmed);
    if (url.isValid() && !url.isLocalFile() && !url.host().isEmpty())
        return isGitHost(url.host()) ? RepositoryKind::git : RepositoryKind::mercurial;
    return isLocalGitRepository(url.isLocalFile() ? url.toLocalFile() : trimmed) ? RepositoryKind::git
                                                                                 : RepositoryKind::mercurial;
}

QString CloneSheet::folderName(const QString &address)
{
    QString name = address.trimmed();
    while (name.endsWith(u'/'))
        name.chop(1);
    // Only the path and the host may name the folder, never the user or password.
    const QUrl url(name);
    if (name.contains(u"://"_s) && url.isValid()) {
        const QString last = url.path().section(u'/', -1, -1, QString::SectionSkipEmpty);
        name = last.isEmpty() ? url.host() : last;
    } else {
        QString afterColon = name.section(u'/', -1).section(u':', -1);
        name = afterColon.isEmpty() ? name.section(u':', 0, 0) : afterColon;
        name = name.section(u'@', -1);
    }
    if (name.endsWith(u".git"_s))
        name.chop(4);
    return name;
}

QString CloneSheet::problem(const QString &address, const QString &parentFolder, const QString &name)
{
    if (address.trimmed().isEmpty())
        return u"Enter the address of the repository to clone."_s;
    if (!validRemoteAddress(address))
        return u"The address cannot begin with “-” or hold a line break."_s;
    if (!QFileInfo(parentFolder).isDir())
        return u"Choose an existing folder to clone into."_s;
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty())
        return u"Enter a name for the new folder."_s;
    if (trimmed.contains(u'/') || trimmed == u"." || trimmed == u"..")
        return u"The folder name cannot contain “/” or be “.” or “..”."_s;
    if (QFileInfo::exists(QDir(parentFolder).filePath(trimmed)))
        return u"“"_s + trimmed + u"” already exists in that folder."_s;
    return QString();
}

CloneSheet::CloneSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
    , m_source(new QLineEdit)
    , m_parent(new QLineEdit(QDir::homePath()))
    , m_name(new QLineEdit)
    , m_kind(new QComboBox)
    , m_problem(new ProblemLabel)
    , m_clone(new QPushButton(u"Clone"_s))
{
    setWindowTitle(u"Clone a Repository"_s);
    m_source->setPlaceholderText(u"https://example.com/project or a local path"_s);
    m_source->setAccessibleName(u"Address"_s);
    m_parent->setAccessibleName(u"Into folder"_s);
    m_name->setAccessibleName(u"Folder name"_s);
    m_kind->setAccessibleName(u"Kind"_s);
    m_kind->addItem(u"Mercurial"_s);
    m_kind->addItem(u"Git"_s);
    auto *choose = new QPushButton(u"Choose…"_s);
    choose->setAccessibleName(u"Choose Clone Destination"_s);
    connect(choose, &QPushButton::clicked, this, [this] {
        const QString folder = QFileDialog::getExistingDirectory(this, u"Choose Clone Destination"_s, m_parent->text());
        if (!folder.isEmpty())
            m_parent->setText(folder);
    });
    connect(m_source, &QLineEdit::textChanged, this, [this](const QString &address) {
        if (!m_kindChosen)
            m_kind->setCurrentIndex(guessKind(address) == RepositoryKind::git ? 1 : 0);
        if (!m_nameEdited)
            m_name->setText(folderName(address));
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
    form->addRow(u"Address:"_s, m_source);
    form->addRow(u"Into folder:"_s, folderRow);
    form->addRow(u"Name:"_s, m_name);
    form->addRow(u"Kind:"_s, m_kind);
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
    layout->addWidget(sheetTitle(u"Clone a Repository"_s));
    layout->addLayout(form);
    layout->addWidget(m_problem);
    layout->addWidget(buttons);
    setMinimumWidth(520);
    update();
}

void CloneSheet::update()
{
    const QString reason = problem(m_source->text(), m_parent->text(), m_name->text());
    // Nothing typed yet is not a problem worth a red line.
    m_problem->setProblem(m_source->text().isEmpty() ? QString() : reason);
    m_clone->setEnabled(reason.isEmpty());
}

} // namespace tillery
