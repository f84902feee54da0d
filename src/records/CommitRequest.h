#pragma once

#include <QString>

namespace tillery {

// What a commit records besides its files.
struct CommitRequest {
    QString summary;
    QString description;
    // Blank: the tool's own configuration names the author.
    QString userName;
    // Replaces the working copy's parent, with the parent's own changes and
    // these together, instead of adding a changeset on top of it.
    bool amend = false;
};

} // namespace tillery
