#include "records/Bookmark.h"
#include "records/Changeset.h"

namespace tillery {

size_t qHash(const Changeset &changeset, size_t seed) noexcept
{
    seed = qHashMulti(seed, changeset.revision, changeset.node, changeset.summary, changeset.description,
                      changeset.author, changeset.date, changeset.branch);
    return qHashMulti(seed, changeset.bookmarks, changeset.tags, changeset.files, changeset.parents);
}

size_t qHash(const Bookmark &bookmark, size_t seed) noexcept
{
    seed = qHashMulti(seed, bookmark.name, bookmark.revision, bookmark.node, bookmark.active, bookmark.date.has_value(),
                      bookmark.needsPush);
    return bookmark.date ? qHash(*bookmark.date, seed) : seed;
}

} // namespace tillery
