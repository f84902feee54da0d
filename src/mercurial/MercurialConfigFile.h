#pragma once

#include <QString>

namespace tillery::mercurial {

// Sets the repository's default remote in .hg/hgrc, keeping everything else
// in the file as it was. The file is replaced atomically and keeps its
// permissions; one that is not UTF-8 text, or a link that leads out of the
// repository, is left alone and the change fails with MercurialFailure.
void writeDefaultPath(const QString &repositoryPath, const QString &address);

} // namespace tillery::mercurial
