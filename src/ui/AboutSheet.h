#pragma once

#include <QDialog>

namespace tillery {

// The application's name, version and what it is for.
class AboutSheet final : public QDialog {
    Q_OBJECT

public:
    explicit AboutSheet(QWidget *parent = nullptr);
};

} // namespace tillery
