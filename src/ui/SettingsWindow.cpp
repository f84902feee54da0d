#include "ui/SettingsWindow.h"

#include "ui/AppearanceSettings.h"
#include "ui/GeneralSettings.h"
#include "ui/Icons.h"
#include "ui/IntegrationsSettings.h"

#include <QDialogButtonBox>
#include <QTabWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

SettingsWindow::SettingsWindow(AppModel &model, ViewSettings &settings, QWidget *parent)
    : QDialog(parent)
    , m_tabs(new QTabWidget)
    , m_general(new GeneralSettings(model))
    , m_appearance(new AppearanceSettings(settings))
    , m_integrations(new IntegrationsSettings(model))
{
    setWindowTitle(tr("Settings"));
    m_tabs->addTab(m_general, symbolIcon(u"person"_s), tr("General"));
    m_tabs->addTab(m_appearance, symbolIcon(u"paintbrush"_s), tr("Appearance"));
    m_tabs->addTab(m_integrations, symbolIcon(u"puzzlepiece"_s), tr("Integrations"));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    layout->addWidget(buttons);
    setMinimumSize(560, 360);
}

} // namespace tillery
