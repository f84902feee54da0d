#pragma once

#include <QString>

#include <optional>

namespace tillery {

// The desktop services the model uses: opening, revealing, the Trash and the
// clipboard. The window uses the platform's; the tests record what was asked.
class Desktop {
public:
    virtual ~Desktop() = default;

    virtual void open(const QString &path) = 0;
    // Called from background work: it may wait for the file manager, and
    // must not touch widgets.
    virtual void reveal(const QString &path) = 0;
    // Moves a file to the Trash; the reason when it could not be moved (then
    // the file stays where it was). Never deletes. Called from background
    // work, so it must not touch widgets.
    virtual std::optional<QString> moveToTrash(const QString &path) = 0;
    virtual void copyToClipboard(const QString &text) = 0;
};

// A menu label that names the file manager: as written for macOS ("Reveal in
// Finder"), "Show in File Manager" elsewhere.
QString fileManagerLabel(const QString &macLabel);

} // namespace tillery
