#pragma once

#include <QWidget>

class QLabel;

namespace tillery {

// A centred placeholder: an icon above a title above a secondary line.
class EmptyState final : public QWidget {
    Q_OBJECT

public:
    EmptyState(const QString &title, const QString &symbolName, const QString &detail, QWidget *parent = nullptr);

    void setTitle(const QString &title);
    void setDetail(const QString &detail);
    QString title() const;
    QString detail() const;

private:
    QLabel *m_title;
    QLabel *m_detail;
};

} // namespace tillery
