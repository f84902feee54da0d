#include "process/ToolFailure.h"

#include "process/Progress.h"
#include "process/RemoteAddress.h"
#include "records/LocalizedOrder.h"
#include "records/TextDecoding.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

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

// `sentence` holds the count as %1 and is marked with QT_TRANSLATE_N_NOOP.
QString leftOut(const char *sentence, qsizetype count)
{
    const int plural = int(std::min<qsizetype>(count, std::numeric_limits<int>::max()));
    return u'\n'
           + QCoreApplication::translate("tillery::ToolFailure", sentence, nullptr, plural)
                 .arg(localizedLocale().toString(count))
           + u'\n';
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
    return *head + leftOut(QT_TRANSLATE_N_NOOP("tillery::ToolFailure", "[… %1 bytes left out …]"), tailStart - headEnd)
           + *tail;
}

QString abridgedArguments(const QStringList &arguments)
{
    const QString text = arguments.join(u' ');
    if (text.size() <= 2 * keptArgumentCharactersAtEachEnd)
        return text;
    const qsizetype cut = text.size() - 2 * keptArgumentCharactersAtEachEnd;
    return text.first(keptArgumentCharactersAtEachEnd)
           + leftOut(QT_TRANSLATE_N_NOOP("tillery::ToolFailure", "[… %1 characters left out …]"), cut)
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
        QString text = QCoreApplication::translate("tillery::ToolFailure", "%1 %2 exited with status %3.")
                           .arg(wording.commandName, withPasswordsMasked(abridgedArguments(payload.arguments)),
                                QString::number(payload.code));
        const QString output = payload.output.trimmed();
        if (!output.isEmpty())
            text += u"\n\n"_s + withPasswordsMasked(output);
        return text;
    }
    case Case::locked: {
        QString text = QCoreApplication::translate(
            "tillery::ToolFailure", "The repository is locked by another process. Try again when it has finished.");
        const QString output = payload.output.trimmed();
        if (!output.isEmpty())
            text += u"\n\n"_s + withPasswordsMasked(output);
        return text;
    }
    case Case::invalidRepository:
        return QCoreApplication::translate("tillery::ToolFailure", "%1 is not a %2 repository.")
            .arg(payload.text, wording.toolName);
    case Case::malformedOutput:
        return QCoreApplication::translate("tillery::ToolFailure", "%1 returned data that could not be read: %2")
            .arg(wording.toolName, payload.text);
    case Case::notInstalled:
        return QCoreApplication::translate("tillery::ToolFailure", wording.notInstalled);
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
        QT_TRANSLATE_NOOP("tillery::ToolFailure",
                          "Mercurial (hg) was not found. Install Mercurial and ensure hg is available on PATH."),
        {"waiting for lock held by", ": lock held by"}};
    return wording;
}

const ToolFailure::Wording &GitFailure::wording()
{
    static const Wording wording{
        u"git"_s,
        u"Git"_s,
        QT_TRANSLATE_NOOP("tillery::ToolFailure",
                          "Git was not found. Install Git and ensure git is available on PATH."),
        {".lock': File exists."}};
    return wording;
}

} // namespace tillery
