#include "process/CommitMessage.h"

using namespace Qt::StringLiterals;

namespace tillery {

QString composeCommitMessage(const QString &summary, const QString &description)
{
    const QString trimmedSummary = summary.trimmed();
    const QString trimmedDescription = description.trimmed();
    return trimmedDescription.isEmpty() ? trimmedSummary : trimmedSummary + u"\n\n"_s + trimmedDescription;
}

} // namespace tillery
