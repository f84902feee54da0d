#include "TestEnvironment.h"

#include "Checks.h"

#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace tillery::test {

namespace {

QString &pinnedRoot()
{
    static QString root;
    return root;
}

} // namespace

void pinTestEnvironment()
{
    if (!pinnedRoot().isEmpty())
        return;
    static QTemporaryDir root(QDir::tempPath() + u"/tillery-test-XXXXXX"_s);
    if (!root.isValid())
        qFatal("cannot create the test folder");
    pinnedRoot() = root.path();
    QStandardPaths::setTestModeEnabled(true);
    const QDir folder(root.path());
    for (const char *name : {"home", "tmp", "config", "data"})
        folder.mkpath(QString::fromLatin1(name));

    const QString hgrc = folder.filePath(u"config/hgrc"_s);
    writeFile(hgrc, "[ui]\n"
                    "username = Tillery Tester <tester@example.com>\n"
                    "merge = internal:merge\n"
                    "[extensions]\n"
                    "[phases]\n"
                    "publish = False\n");
    const QString gitconfig = folder.filePath(u"config/gitconfig"_s);
    writeFile(gitconfig, "[user]\n"
                         "\tname = Tillery Tester\n"
                         "\temail = tester@example.com\n"
                         "[init]\n"
                         "\tdefaultBranch = main\n"
                         "[commit]\n"
                         "\tgpgsign = false\n"
                         "[core]\n"
                         "\tautocrlf = false\n"
                         "[advice]\n"
                         "\tdetachedHead = false\n");

    qputenv("HOME", folder.filePath(u"home"_s).toUtf8());
    qputenv("XDG_CONFIG_HOME", folder.filePath(u"config"_s).toUtf8());
    // Where the Trash is.
    qputenv("XDG_DATA_HOME", folder.filePath(u"data"_s).toUtf8());
    qputenv("TMPDIR", folder.filePath(u"tmp"_s).toUtf8());
    qputenv("HGRCPATH", hgrc.toUtf8());
    qputenv("GIT_CONFIG_GLOBAL", gitconfig.toUtf8());
    qputenv("GIT_CONFIG_NOSYSTEM", "1");
    for (const char *name : {"HG", "GIT", "HGPLAIN", "HGUSER", "EMAIL", "GIT_DIR", "GIT_WORK_TREE"})
        qunsetenv(name);
    // The Trash lives there; Qt does not make the folder.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

QStringList temporaryFilesStartingWith(const QString &prefix)
{
    return QDir(QDir::tempPath()).entryList({prefix + u'*'}, QDir::Files | QDir::Hidden);
}

ScopedEnvironmentVariable::ScopedEnvironmentVariable(const char *name, const std::optional<QByteArray> &value)
    : m_name(name)
{
    if (qEnvironmentVariableIsSet(name))
        m_previous = qgetenv(name);
    if (value)
        qputenv(name, *value);
    else
        qunsetenv(name);
}

ScopedEnvironmentVariable::~ScopedEnvironmentVariable()
{
    if (m_previous)
        qputenv(m_name.constData(), *m_previous);
    else
        qunsetenv(m_name.constData());
}

} // namespace tillery::test
