#include "process/Executables.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

std::optional<QString> findExecutable(const char *variable, const QString &name)
{
    QStringList candidates;
    if (qEnvironmentVariableIsSet(variable))
        candidates.append(qEnvironmentVariable(variable));
    for (const QString &folder : {u"/opt/homebrew/bin"_s, u"/usr/local/bin"_s, u"/usr/bin"_s})
        candidates.append(folder + u'/' + name);

    for (const QString &candidate : std::as_const(candidates)) {
        const QFileInfo info(candidate);
        if (info.isFile() && info.isExecutable())
            return candidate;
    }
    // A tool installed for one person only (~/.local/bin) is on the search path.
    const QString onPath = QStandardPaths::findExecutable(name);
    return onPath.isEmpty() ? std::nullopt : std::optional(onPath);
}

} // namespace

std::optional<QString> findMercurialExecutable()
{
    return findExecutable("HG", u"hg"_s);
}

std::optional<QString> findGitExecutable()
{
    return findExecutable("GIT", u"git"_s);
}

QStringList mercurialLeadingArguments()
{
    return {u"--noninteractive"_s, u"--config=ui.timeout="_s + QString::number(mercurialLockWaitSeconds)};
}

QStringList gitLeadingArguments()
{
    return {u"--no-pager"_s};
}

QProcessEnvironment mercurialEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!environment.contains(u"HGENCODING"_s))
        environment.insert(u"HGENCODING"_s, u"UTF-8"_s);
    environment.insert(u"HGPLAIN"_s, u"+strictflags"_s);
    environment.remove(u"HGPLAINEXCEPT"_s);
    return environment;
}

QProcessEnvironment gitEnvironment()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"GIT_TERMINAL_PROMPT"_s, u"0"_s);
    environment.insert(u"GIT_EDITOR"_s, u"true"_s);
    environment.insert(u"GIT_MERGE_AUTOEDIT"_s, u"no"_s);
    environment.insert(u"LC_ALL"_s, u"C"_s);
    environment.insert(u"GIT_OPTIONAL_LOCKS"_s, u"0"_s);
    return environment;
}

} // namespace tillery
