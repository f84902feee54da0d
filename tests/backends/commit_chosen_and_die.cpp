// Commits the chosen lines of one file of a Mercurial repository, as
// Tillery does, in a process a commit hook of the test kills on the way:
//   commit_chosen_and_die REPOSITORY PATH DIFF-FILE ID...
// The hook finds this process as $TILLERY_TEST_VICTIM.
#include "model/VersionControl.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

using namespace tillery;

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() < 5)
        return 2;
    qputenv("TILLERY_TEST_VICTIM", QByteArray::number(getpid()));
    QFile diff(arguments[3]);
    if (!diff.open(QIODevice::ReadOnly))
        return 2;
    ChosenChanges chosen{WorkingFile{arguments[2], FileState::modified}, QString::fromUtf8(diff.readAll()), {}};
    for (const QString &id : arguments.mid(4))
        chosen.lines.insert(id.toLongLong());
    try {
        versionControl(RepositoryKind::mercurial)
            .commitChosen(arguments[1], {}, {chosen}, {QStringLiteral("Part"), {}, {}});
    } catch (...) {
        return 1;
    }
    return 0;
}
