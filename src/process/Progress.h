#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace tillery {

// The newest progress report in what a tool wrote to standard error so far,
// as a short phrase such as "Receiving objects: 45%". Progress lines end in
// carriage returns and are rewritten in place; only the last counts.
std::optional<QString> latestGitProgress(QByteArrayView standardError);
// Mercurial's, run with the progress format "topic number": "files 12/40"
// becomes "Files: 30%".
std::optional<QString> latestMercurialProgress(QByteArrayView standardError);

// Tool output as a terminal would leave it: of each line rewritten with
// carriage returns only its last version, blank lines dropped.
QString asTerminalShowsIt(const QString &text);

} // namespace tillery
