#pragma once

#include <QWidget>

namespace tillery {

class AppModel;
class ViewSettings;

// The start page when no repository is selected.
class WelcomeView final : public QWidget {
    Q_OBJECT

public:
    WelcomeView(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);
};

} // namespace tillery
