#include "mercurial/MercurialConfigFile.h"

#include "mercurial/IniText.h"
#include "process/Failure.h"
#include "process/RemoteAddress.h"
#include "process/RepositoryFile.h"
#include "process/ToolFailure.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery::mercurial {

namespace {

QString problemSentence(RepositoryFileProblem problem)
{
    switch (problem) {
    case RepositoryFileProblem::isLink:
        return QCoreApplication::translate("tillery::MercurialConfigFile",
                                           "The repository configuration file .hg/hgrc is a symbolic link, which "
                                           "Tillery never writes through; it was left unchanged.");
    case RepositoryFileProblem::unreadable:
        return QCoreApplication::translate(
            "tillery::MercurialConfigFile",
            "The repository configuration file .hg/hgrc could not be read; it was left unchanged.");
    case RepositoryFileProblem::notUtf8:
        return QCoreApplication::translate(
            "tillery::MercurialConfigFile",
            "The repository configuration file .hg/hgrc is not UTF-8 text; it was left unchanged.");
    }
    Q_UNREACHABLE();
    return QString();
}

} // namespace

void writeDefaultPath(const QString &repositoryPath, const QString &address)
{
    const auto read = readRepositoryTextFile(repositoryPath, u".hg/hgrc"_s);
    if (const auto *problem = std::get_if<RepositoryFileProblem>(&read))
        throw RefusedInput(problemSentence(*problem));
    const RepositoryTextFile &file = std::get<RepositoryTextFile>(read);
    const std::optional<QString> text = setIniValue(file.text, u"paths"_s, u"default"_s, address);
    if (!text)
        throw RefusedInput(invalidAddressSentence());
    if (const std::optional<QString> reason = replaceTextFile(file.path, *text))
        throw PlatformFailure(*reason);
}

} // namespace tillery::mercurial
