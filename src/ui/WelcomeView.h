#pragma once

#include <QWidget>

namespace tillery {

class AppModel;

// The start page when no repository is selected.
class WelcomeView final : public QWidget {
    Q_OBJECT

public:
    explicit WelcomeView(AppModel &model, QWidget *parent = nullptr);
};

} // namespace tillery
