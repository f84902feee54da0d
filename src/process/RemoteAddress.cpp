#include "process/RemoteAddress.h"

#include "process/Failure.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

const QString mask = u"***"_s;

std::optional<QUrl> parsed(const QString &address)
{
    const QUrl url(address, QUrl::StrictMode);
    if (!url.isValid())
        return std::nullopt;
    return url;
}

bool hasMaskedPassword(const std::optional<QUrl> &url)
{
    return url && url->password(QUrl::FullyDecoded) == mask;
}

bool holdsLineBreak(const QString &text)
{
    return text.contains(u'\n') || text.contains(u'\r');
}

} // namespace

bool isMaskedRemoteAddress(const QString &address)
{
    return hasMaskedPassword(parsed(address)) || address.contains(u":***@"_s);
}

std::optional<QString> restoreMaskedPassword(const QString &entered, const QString &stored)
{
    if (!isMaskedRemoteAddress(entered))
        return entered;
    std::optional<QUrl> enteredUrl = parsed(entered);
    if (!hasMaskedPassword(enteredUrl) || stored.isEmpty())
        return std::nullopt;
    const std::optional<QUrl> storedUrl = parsed(stored);
    if (!storedUrl || storedUrl->password().isEmpty() || hasMaskedPassword(storedUrl))
        return std::nullopt;

    enteredUrl->setPassword(storedUrl->password(QUrl::FullyEncoded), QUrl::StrictMode);
    if (!enteredUrl->isValid())
        return std::nullopt;
    const QString restored = enteredUrl->toString(QUrl::FullyEncoded);
    if (restored.isEmpty() || isMaskedRemoteAddress(restored))
        return std::nullopt;
    return restored;
}

std::optional<QString> validRemoteAddress(const QString &entered)
{
    const QString address = entered.trimmed();
    if (address.isEmpty() || holdsLineBreak(address) || address.startsWith(u'-'))
        return std::nullopt;
    return address;
}

QString invalidAddressSentence()
{
    return QCoreApplication::translate("tillery::RemoteAddress",
                                       "Enter a valid remote address: it cannot be empty, begin with “-” or hold a "
                                       "line break.");
}

QString unrestorablePasswordSentence()
{
    return QCoreApplication::translate("tillery::RemoteAddress",
                                       "The masked remote password could not be restored; enter the password again.");
}

QString addressToStore(const QString &entered, const std::function<QString()> &storedAddress)
{
    std::optional<QString> address = validRemoteAddress(entered);
    if (!address)
        throw RefusedInput(invalidAddressSentence());
    if (isMaskedRemoteAddress(*address)) {
        address = restoreMaskedPassword(*address, storedAddress());
        if (!address)
            throw RefusedInput(unrestorablePasswordSentence());
    }
    return *address;
}

QString withPasswordsMasked(const QString &text)
{
    static const QRegularExpression password(uR"((\b[A-Za-z][A-Za-z0-9+.\-]*://[^\s/@:]*:)[^\s/@]+@)"_s);
    QString masked = text;
    return masked.replace(password, u"\\1***@"_s);
}

} // namespace tillery
