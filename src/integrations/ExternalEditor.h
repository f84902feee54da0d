#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace tillery {

// The editors Tillery knows by name, and `other` for any application or
// executable the person chooses. The raw value is the case name.
enum class ExternalEditor { sublimeText, textMate, vsCode, xcode, other };

QList<ExternalEditor> allExternalEditors();
QString rawValue(ExternalEditor editor);
std::optional<ExternalEditor> externalEditorFromRawValue(const QString &raw);
// "Sublime Text", "TextMate", "VS Code", "Xcode"; "Editor" for `other`.
QString displayName(ExternalEditor editor);
// The bundle identifiers of a known editor, in the order they are tried.
QStringList bundleIdentifiers(ExternalEditor editor);
// The known editor an application bundle identifier belongs to.
std::optional<ExternalEditor> externalEditorWithBundleIdentifier(const QString &identifier);

} // namespace tillery
