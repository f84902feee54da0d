#pragma once

#include <QCollator>
#include <QList>
#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace tillery {

// The system locale, or English when the process runs under the C locale:
// how texts are ordered and numbers written for the person.
QLocale localizedLocale();

// The file browser's order: case-insensitive, digit runs compared by value.
// Built from the system locale, or from English when the process runs under
// the C locale (where numeric collation is not available).
QCollator localizedCollator();

// The stable permutation that puts the texts in localized order.
QList<qsizetype> localizedOrder(const QStringList &texts);

template <typename T, typename KeyOf>
void sortLocalized(QList<T> &items, KeyOf keyOf)
{
    QStringList keys;
    keys.reserve(items.size());
    for (const T &item : items)
        keys.append(keyOf(item));
    const QList<qsizetype> order = localizedOrder(keys);
    QList<T> sorted;
    sorted.reserve(items.size());
    for (const qsizetype index : order)
        sorted.append(std::move(items[index]));
    items = std::move(sorted);
}

} // namespace tillery
