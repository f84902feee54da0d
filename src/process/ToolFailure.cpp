#include "process/ToolFailure.h"

#include "process/Progress.h"
#include "process/RemoteAddress.h"
#include "records/TextDecoding.h"

#include <QLocale>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// A tool that prints megabytes before it fails must not make an alert of
// megabytes: long texts keep this much of their start and of their end.
constexpr qsizetype keptBytesAtEachEnd = 3000;
constexpr qsizetype keptArgumentCharactersAtEachEnd = 1000;

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

QString leftOut(qsizetype count, const QString &unit)
{
    return u"\n[… %1 %2 left out …]\n"_s.arg(QLocale(QLocale::English).toString(count), unit);
}

// The start and the end of a long stream, each cut at a letter's boundary.
QString abridgedText(const QByteArray &bytes)
{
    if (bytes.size() <= 2 * keptBytesAtEachEnd)
        return decodeUtf8OrEmpty(bytes);
    qsizetype headEnd = keptBytesAtEachEnd;
    while (headEnd > 0 && isContinuationByte(bytes[headEnd]))
        --headEnd;
    qsizetype tailStart = bytes.size() - keptBytesAtEachEnd;
    while (tailStart < bytes.size() && isContinuationByte(bytes[tailStart]))
        ++tailStart;
    const std::optional<QString> head = decodeUtf8(QByteArrayView(bytes).first(headEnd));
    const std::optional<QString> tail = decodeUtf8(QByteArrayView(bytes).sliced(tailStart));
    if (!head || !tail)
        return QString();
    return *head + leftOut(tailStart - headEnd, u"bytes"_s) + *tail;
}

QString abridgedArguments(const QStringList &arguments)
{
    const QString text = arguments.join(u' ');
    if (text.size() <= 2 * keptArgumentCharactersAtEachEnd)
        return text;
    const qsizetype cut = text.size() - 2 * keptArgumentCharactersAtEachEnd;
    return text.first(keptArgumentCharactersAtEachEnd) + leftOut(cut, u"characters"_s)
           + text.last(keptArgumentCharactersAtEachEnd);
}

} // namespace

ToolFailure::ToolFailure(const Wording &wording, Payload payload)
    : Failure(describe(wording, payload))
    , m_payload(std::move(payload))
{
}

QString ToolFailure::describe(const Wording &wording, const Payload &payload)
{
    switch (payload.failureCase) {
    case Case::command: {
        // An address in the arguments or the tool's words may carry a password.
        QString text = wording.commandName + u' ' + withPasswordsMasked(abridgedArguments(payload.arguments))
                       + u" exited with status "_s + QString::number(payload.code) + u'.';
        const QString output = payload.output.trimmed();
        if (!output.isEmpty())
            text += u"\n\n"_s + withPasswordsMasked(output);
        return text;
    }
    case Case::locked: {
        QString text = u"The repository is locked by another process. Try again when it has finished."_s;
        const QString output = payload.output.trimmed();
        if (!output.isEmpty())
            text += u"\n\n"_s + withPasswordsMasked(output);
        return text;
    }
    case Case::invalidRepository:
        return payload.text + u" is not a "_s + wording.toolName + u" repository."_s;
    case Case::malformedOutput:
        return wording.toolName + u" returned data that could not be read: "_s + payload.text;
    case Case::notInstalled:
        return wording.notInstalled;
    }
    Q_UNREACHABLE();
    return QString();
}

QString ToolFailure::combinedOutput(const QByteArray &standardError, const QByteArray &standardOutput)
{
    QStringList texts;
    for (const QByteArray *stream : {&standardError, &standardOutput}) {
        QString text = asTerminalShowsIt(abridgedText(*stream));
        if (!text.isEmpty())
            texts.append(std::move(text));
    }
    return texts.join(u'\n');
}

bool ToolFailure::mentionsHeldLock(const Wording &wording, const QByteArray &standardError)
{
    return std::any_of(wording.lockHeldMarkers.cbegin(), wording.lockHeldMarkers.cend(),
                       [&standardError](const QByteArray &marker) { return standardError.contains(marker); });
}

const ToolFailure::Wording &MercurialFailure::wording()
{
    static const Wording wording{
        u"hg"_s,
        u"Mercurial"_s,
        u"Mercurial (hg) was not found. Install Mercurial and ensure hg is available on PATH."_s,
        {"waiting for lock held by", ": lock held by"}};
    return wording;
}

const ToolFailure::Wording &GitFailure::wording()
{
    static const Wording wording{u"git"_s,
                                 u"Git"_s,
                                 u"Git was not found. Install Git and ensure git is available on PATH."_s,
                                 {".lock': File exists."}};
    return wording;
}

} // namespace tillery
