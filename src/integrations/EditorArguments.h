#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>

// The argument string of a custom editor: words separated by white space,
// with single quotes (everything literal), double quotes (backslash escapes)
// and backslash escapes outside quotes. "%TARGET_PATH%" in any argument
// stands for the path to open.
namespace tillery::ExternalEditorArguments {

inline const QString placeholder = QStringLiteral("%TARGET_PATH%");

enum class ParseError { unterminatedQuote, trailingEscape };
QString errorText(ParseError error);

std::variant<QStringList, ParseError> parse(const QString &text);

// The reason the string cannot be used, or nothing when it is fine.
std::optional<QString> validate(const QString &text);

// Every occurrence of the placeholder replaced by the path, literally.
QStringList substituted(const QStringList &arguments, const QString &targetPath);

} // namespace tillery::ExternalEditorArguments
