#include "ui/MainWindow.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace tillery {

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
{
    setWindowTitle(u"Tillery"_s);
    setMinimumSize(940, 620);
    auto *welcome = new QLabel(u"Tillery"_s, this);
    welcome->setAlignment(Qt::AlignCenter);
    setCentralWidget(welcome);
}

} // namespace tillery
