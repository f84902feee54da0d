#pragma once

#include <QMainWindow>

namespace tillery {

class MainWindow final : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
};

} // namespace tillery
