#include "records/LocalizedOrder.h"

#include <numeric>
#include <vector>

namespace tillery {

QLocale localizedLocale()
{
    const QLocale system = QLocale::system();
    return system.language() == QLocale::C ? QLocale(QLocale::English) : system;
}

QCollator localizedCollator()
{
    QCollator collator(localizedLocale());
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
