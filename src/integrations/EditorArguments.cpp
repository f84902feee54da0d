#include "integrations/EditorArguments.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery::ExternalEditorArguments {

QString errorText(ParseError error)
{
    switch (error) {
    case ParseError::unterminatedQuote:
        return QCoreApplication::translate("tillery::EditorArguments", "The arguments contain an unterminated quote.");
    case ParseError::trailingEscape:
        return QCoreApplication::translate("tillery::EditorArguments", "The arguments end with an incomplete escape.");
    }
    Q_UNREACHABLE();
    return QString();
}

std::variant<QStringList, ParseError> parse(const QString &text)
{
    QStringList arguments;
    QString current;
    bool started = false;
    QChar quote;
    bool escapePending = false;

    for (const QChar character : text) {
        if (escapePending) {
            current += character;
            escapePending = false;
            started = true;
        } else if (character == u'\\' && quote != u'\'') {
            escapePending = true;
            started = true;
        } else if (!quote.isNull()) {
            if (character == quote)
                quote = QChar();
            else
                current += character;
        } else if (character == u'"' || character == u'\'') {
            quote = character;
            started = true;
        } else if (character.isSpace()) {
            if (started) {
                arguments.append(current);
                current.clear();
                started = false;
            }
        } else {
            current += character;
            started = true;
        }
    }
    if (escapePending)
        return ParseError::trailingEscape;
    if (!quote.isNull())
        return ParseError::unterminatedQuote;
    if (started)
        arguments.append(current);
    return arguments;
}

std::optional<QString> validate(const QString &text)
{
    const auto parsed = parse(text);
    if (const ParseError *error = std::get_if<ParseError>(&parsed))
        return errorText(*error);
    for (const QString &argument : std::get<QStringList>(parsed)) {
        if (argument.contains(placeholder))
            return std::nullopt;
    }
    return QCoreApplication::translate("tillery::EditorArguments", "Arguments must include %TARGET_PATH%.");
}

QStringList substituted(const QStringList &arguments, const QString &targetPath)
{
    QStringList result;
    result.reserve(arguments.size());
    for (QString argument : arguments)
        result.append(argument.replace(placeholder, targetPath));
    return result;
}

} // namespace tillery::ExternalEditorArguments
