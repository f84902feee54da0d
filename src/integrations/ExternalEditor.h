#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// The editors Tillery knows by name, and `other` for any application or
// executable the person chooses. The raw value (persisted) is the case name.
// Each platform offers its own selection of the known ones.
enum class ExternalEditor { sublimeText, textMate, vsCode, xcode, kate, gnomeTextEditor, gedit, zed, other };

QList<ExternalEditor> allExternalEditors();
// The editors this platform offers, `other` last.
QList<ExternalEditor> platformExternalEditors();
QString rawValue(ExternalEditor editor);
std::optional<ExternalEditor> externalEditorFromRawValue(const QString &raw);
// "Sublime Text", "VS Code", ...; "Editor" for `other`.
QString displayName(ExternalEditor editor);
// macOS: the bundle identifiers of a known editor, in the order they are tried.
QStringList bundleIdentifiers(ExternalEditor editor);
// The known editor an application bundle identifier belongs to.
std::optional<ExternalEditor> externalEditorWithBundleIdentifier(const QString &identifier);
// Linux: the executable names and desktop-file ids a known editor is found by.
QStringList executableNames(ExternalEditor editor);
QStringList desktopFileIds(ExternalEditor editor);

} // namespace tillery
