#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace tillery {

// Mercurial prints the password of a remote address as "***". An address is
// masked when its URL password is "***" or, failing that, when it contains
// ":***@" anywhere.
bool isMaskedRemoteAddress(const QString &address);

// Carries the password of the stored address over into a masked entered one,
// so that host, path or user name can change while the real password stays.
// An entered address that is not masked comes back as it is; nothing comes
// back when the password cannot be carried over.
std::optional<QString> restoreMaskedPassword(const QString &entered, const QString &stored);

// The address as entered, trimmed; nothing when it is empty, holds a line
// break or begins with "-" (it would be read as an option).
std::optional<QString> validRemoteAddress(const QString &entered);

// The sentences of the two ways an entered address is refused.
QString invalidAddressSentence();
QString unrestorablePasswordSentence();

// The address to store for what the person entered: trimmed and checked, and
// for a masked address with the password of the stored one (asked for only
// then). Refusals are RefusedInput failures.
QString addressToStore(const QString &entered, const std::function<QString()> &storedAddress);

// The text with the password of every URL in it replaced by "***", for
// messages that may quote an address.
QString withPasswordsMasked(const QString &text);

} // namespace tillery
