#pragma once

#include <QDialog>

class QTabWidget;

namespace tillery {

class AppModel;
class AppearanceSettings;
class GeneralSettings;
class IntegrationsSettings;
class ViewSettings;

// The Settings window: General, Appearance and Integrations. Every value is
// stored the moment it changes; there is nothing to confirm.
class SettingsWindow final : public QDialog {
    Q_OBJECT

public:
    SettingsWindow(AppModel &model, ViewSettings &settings, QWidget *parent = nullptr);

    QTabWidget *tabs() const { return m_tabs; }
    GeneralSettings *general() const { return m_general; }
    AppearanceSettings *appearance() const { return m_appearance; }
    IntegrationsSettings *integrations() const { return m_integrations; }

private:
    QTabWidget *m_tabs;
    GeneralSettings *m_general;
    AppearanceSettings *m_appearance;
    IntegrationsSettings *m_integrations;
};

} // namespace tillery
