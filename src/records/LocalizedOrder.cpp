#include "records/LocalizedOrder.h"

#include <QLocale>

#include <numeric>
#include <vector>

namespace tillery {

QCollator localizedCollator()
{
    const QLocale system = QLocale::system();
    const QLocale locale = system.language() == QLocale::C ? QLocale(QLocale::English) : system;
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

QList<qsizetype> localizedOrder(const QStringList &texts)
{
    const QCollator collator = localizedCollator();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(static_cast<size_t>(texts.size()));
    for (const QString &text : texts)
        keys.push_back(collator.sortKey(text));

    QList<qsizetype> order(texts.size());
    std::iota(order.begin(), order.end(), qsizetype(0));
    std::stable_sort(order.begin(), order.end(), [&keys](qsizetype left, qsizetype right) {
        return keys[static_cast<size_t>(left)].compare(keys[static_cast<size_t>(right)]) < 0;
    });
    return order;
}

} // namespace tillery
