#include "model/HistorySearch.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QStringList searchWords(const QString &text)
{
    QStringList words;
    QString word;
    bool quoted = false;
    bool started = false;
    for (const QChar character : text) {
        if (character == u'"') {
            quoted = !quoted;
            started = true;
        } else if (character.isSpace() && !quoted) {
            if (started && !word.isEmpty())
                words.append(word);
            word.clear();
            started = false;
        } else {
            word.append(character);
            started = true;
        }
    }
    if (!word.isEmpty())
        words.append(word);
    return words;
}

bool isHashPrefix(const QString &word)
{
    static const QRegularExpression hexadecimal(u"^[0-9a-fA-F]{7,40}$"_s);
    return hexadecimal.match(word).hasMatch()
           && std::any_of(word.cbegin(), word.cend(), [](QChar c) { return c.isDigit(); });
}

bool looksLikePath(const QString &word)
{
    static const QRegularExpression fileName(u"^[^.\\s]+\\.[A-Za-z][A-Za-z0-9]{0,5}$"_s);
    return word.contains(u'/') || fileName.match(word).hasMatch();
}

} // namespace

HistoryFilter parseHistorySearch(const QString &text)
{
    HistoryFilter filter;
    for (const QString &word : searchWords(text)) {
        if (word.startsWith(u"author:"_s, Qt::CaseInsensitive) && word.size() > 7)
            filter.authors.append(word.sliced(7));
        else if (word.startsWith(u"file:"_s, Qt::CaseInsensitive) && word.size() > 5 && filter.path.isEmpty())
            filter.path = word.sliced(5);
        else if (filter.hashPrefix.isEmpty() && isHashPrefix(word))
            filter.hashPrefix = word.toLower();
        else if (filter.path.isEmpty() && looksLikePath(word))
            filter.path = word;
        else
            filter.words.append(word);
    }
    while (filter.path.startsWith(u"./"_s))
        filter.path.remove(0, 2);
    return filter;
}

} // namespace tillery
