#include "ui/Sheets.h"

#include "model/AppModel.h"
#include "process/RemoteAddress.h"
#include "ui/Icons.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QLabel *titleLabel(const QString &text)
{
    auto *label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.1);
    label->setFont(font);
    return label;
}

QLabel *secondaryLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setWordWrap(true);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

RepositoryKind CloneSheet::guessKind(const QString &address)
{
    const QString trimmed = address.trimmed();
    const bool git = trimmed.endsWith(u".git"_s) || trimmed.endsWith(u".git/"_s) || trimmed.startsWith(u"git@"_s)
                     || trimmed.startsWith(u"git://"_s) || QDir(trimmed).exists(u".git"_s);
    return git ? RepositoryKind::git : RepositoryKind::mercurial;
}

QString CloneSheet::folderName(const QString &address)
{
    QString name = address.trimmed();
    while (name.endsWith(u'/'))
        name.chop(1);
    name = name.section(u'/', -1).section(u':', -1);
    if (name.endsWith(u".git"_s))
        name.chop(4);
    return name;
}

CloneSheet::CloneSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_model(model)
    , m_source(new QLineEdit)
    , m_parent(new QLineEdit(QDir::homePath()))
    , m_name(new QLineEdit)
    , m_kind(new QComboBox)
    , m_clone(new QPushButton(u"Clone"_s))
{
    setWindowTitle(u"Clone a Repository"_s);
    m_source->setPlaceholderText(u"https://example.com/project or a local path"_s);
    m_kind->addItem(u"Mercurial"_s);
    m_kind->addItem(u"Git"_s);
    auto *choose = new QPushButton(u"Choose…"_s);
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
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_clone, &QPushButton::clicked, this, [this] {
        m_model.clone(m_source->text().trimmed(), QDir(m_parent->text()).filePath(m_name->text().trimmed()),
                      m_kind->currentIndex() == 1 ? RepositoryKind::git : RepositoryKind::mercurial);
        accept();
    });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(titleLabel(u"Clone a Repository"_s));
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(480);
    update();
}

void CloneSheet::update()
{
    const QString name = m_name->text().trimmed();
    m_clone->setEnabled(!m_source->text().trimmed().isEmpty() && !name.isEmpty() && !name.contains(u'/')
                        && QDir(m_parent->text()).exists() && !QDir(m_parent->text()).exists(name));
}

QString CreateBookmarkSheet::nameProblem(const QString &name)
{
    if (name.trimmed().isEmpty())
        return u"Enter a name."_s;
    if (name.startsWith(u'-'))
        return u"A name cannot begin with “-”."_s;
    if (name != name.trimmed())
        return u"A name cannot begin or end with a space."_s;
    return QString();
}

CreateBookmarkSheet::CreateBookmarkSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_name(new QLineEdit)
    , m_problem(secondaryLabel(QString()))
    , m_create(new QPushButton(u"Create"_s))
{
    const std::optional<Repository> &repository = model.workspace().selectedRepository();
    const bool git = repository && repository->kind == RepositoryKind::git;
    setWindowTitle(u"Create a Bookmark"_s);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(m_create, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_create, &QPushButton::clicked, this, [this, &model] {
        model.createBookmark(m_name->text());
        accept();
    });
    connect(m_name, &QLineEdit::textChanged, this, [this](const QString &name) {
        const QString problem = nameProblem(name);
        m_problem->setText(name.isEmpty() ? QString() : problem);
        m_create->setEnabled(problem.isEmpty());
    });
    m_create->setEnabled(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(titleLabel(u"Create a Bookmark"_s));
    layout->addWidget(new QLabel(git ? u"Create and check out a Git branch at the current commit."_s
                                     : u"Create a Mercurial bookmark at the current changeset."_s));
    layout->addWidget(m_name);
    layout->addWidget(m_problem);
    layout->addWidget(secondaryLabel(git ? u"The branch will point to the current commit and be checked out."_s
                                         : u"The bookmark will point to the current changeset and become active."_s));
    layout->addWidget(buttons);
    setMinimumWidth(420);
}

RepositorySettingsSheet::RepositorySettingsSheet(AppModel &model, QWidget *parent)
    : QDialog(parent)
    , m_address(new QLineEdit)
{
    const std::optional<Repository> &repository = model.workspace().selectedRepository();
    const bool git = repository && repository->kind == RepositoryKind::git;
    setWindowTitle(u"Repository Settings"_s);
    m_address->setText(withPasswordsMasked(model.workspace().snapshot().paths.value(u"default"_s)));
    auto *save = new QPushButton(u"Save"_s);
    auto *buttons = new QDialogButtonBox;
    buttons->addButton(save, QDialogButtonBox::AcceptRole);
    buttons->addButton(QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(save, &QPushButton::clicked, this, [this, &model] {
        model.saveRemotePath(m_address->text());
        accept();
    });
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(titleLabel(u"Repository Settings"_s));
    layout->addWidget(secondaryLabel(
        git ? u"Set the Git `origin` remote used by Pull and Push. HTTPS, SSH, and local paths are supported."_s
            : u"Set the Mercurial `default` path used by Pull and Push. HTTPS, SSH, and local paths are supported."_s));
    layout->addWidget(m_address);
    layout->addWidget(buttons);
    setMinimumWidth(480);
}

AboutSheet::AboutSheet(QWidget *parent)
    : QDialog(parent)
{
    setWindowTitle(u"About Tillery"_s);
    auto *icon = new QLabel;
    icon->setPixmap(symbolIcon(u"point.3.connected.trianglepath.dotted"_s).pixmap(48, 48));
    icon->setAlignment(Qt::AlignCenter);
    auto *name = titleLabel(u"Tillery"_s);
    name->setAlignment(Qt::AlignCenter);
    auto *version = secondaryLabel(u"Version "_s + QCoreApplication::applicationVersion());
    version->setAlignment(Qt::AlignCenter);
    auto *about = secondaryLabel(u"A desktop client for Mercurial and Git repositories."_s);
    about->setAlignment(Qt::AlignCenter);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    auto *layout = new QVBoxLayout(this);
    for (QWidget *widget : std::initializer_list<QWidget *>{icon, name, version, about, buttons})
        layout->addWidget(widget);
}

} // namespace tillery
