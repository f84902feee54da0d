#include "process/Progress.h"

#include "records/TextDecoding.h"

#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

// The progress segments, newest first.
QStringList segmentsNewestFirst(QByteArrayView standardError)
{
    // Only the tail matters, and a cut multi-byte letter must not spoil it.
    const qsizetype tail = 4096;
    const QByteArrayView recent = standardError.size() > tail ? standardError.last(tail) : standardError;
    QString text = QString::fromUtf8(recent);
    text.replace(u'\n', u'\r');
    QStringList segments = text.split(u'\r', Qt::SkipEmptyParts);
    std::reverse(segments.begin(), segments.end());
    return segments;
}

QString capitalised(QString text)
{
    if (!text.isEmpty())
        text[0] = text[0].toUpper();
    return text;
}

} // namespace

std::optional<QString> latestGitProgress(QByteArrayView standardError)
{
    static const QRegularExpression pattern(uR"(^(?:remote: )?([A-Za-z][A-Za-z ]*[A-Za-z]):\s+(\d{1,3})%)"_s);
    for (const QString &segment : segmentsNewestFirst(standardError)) {
        const QRegularExpressionMatch match = pattern.match(segment);
        if (match.hasMatch())
            return match.captured(1) + u": "_s + match.captured(2) + u'%';
    }
    return std::nullopt;
}

std::optional<QString> latestMercurialProgress(QByteArrayView standardError)
{
    static const QRegularExpression pattern(uR"(^\s*([a-z][a-z ]*[a-z])\s+(\d+)(?:/(\d+))?\s*$)"_s);
    for (const QString &segment : segmentsNewestFirst(standardError)) {
        const QRegularExpressionMatch match = pattern.match(segment);
        if (!match.hasMatch())
            continue;
        const QString topic = capitalised(match.captured(1));
        const qint64 position = match.captured(2).toLongLong();
        const qint64 total = match.captured(3).toLongLong();
        if (total <= 0)
            return topic + u": "_s + QString::number(position);
        return topic + u": "_s + QString::number(std::min<qint64>(100, position * 100 / total)) + u'%';
    }
    return std::nullopt;
}

QString asTerminalShowsIt(const QString &text)
{
    if (!text.contains(u'\r'))
        return text;
    QStringList shown;
    // A carriage return before a line feed only ends the line (Windows line ends).
    for (const QString &line : QString(text).replace(u"\r\n"_s, u"\n"_s).split(u'\n')) {
        const QString last = line.section(u'\r', -1);
        if (!last.trimmed().isEmpty())
            shown.append(last);
    }
    return shown.join(u'\n');
}

} // namespace tillery
