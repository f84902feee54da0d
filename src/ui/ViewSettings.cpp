#include "ui/ViewSettings.h"

#include "model/ModelSettings.h"

using namespace Qt::StringLiterals;

namespace tillery {

QString rawValue(ButtonAppearance appearance)
{
    return appearance == ButtonAppearance::classic ? u"Mac OS 10.7"_s : u"macOS Default"_s;
}

QList<ButtonAppearance> allButtonAppearances()
{
    return {ButtonAppearance::platformDefault, ButtonAppearance::classic};
}

ViewSettings::ViewSettings(QSettings &settings, QObject *parent)
    : QObject(parent)
    , m_settings(settings)
{
}

DiffCanvas::Layout ViewSettings::diffLayout() const
{
    return m_settings.value(settingsKeys::diffLayout).toString() == u"Split" ? DiffCanvas::Layout::split
                                                                             : DiffCanvas::Layout::unified;
}

void ViewSettings::setDiffLayout(DiffCanvas::Layout layout)
{
    m_settings.setValue(settingsKeys::diffLayout, layout == DiffCanvas::Layout::split ? u"Split"_s : u"Unified"_s);
    Q_EMIT diffLayoutChanged(layout);
}

ButtonAppearance ViewSettings::buttonAppearance() const
{
    return m_settings.value(settingsKeys::buttonAppearance).toString() == rawValue(ButtonAppearance::classic)
               ? ButtonAppearance::classic
               : ButtonAppearance::platformDefault;
}

void ViewSettings::setButtonAppearance(ButtonAppearance appearance)
{
    m_settings.setValue(settingsKeys::buttonAppearance, rawValue(appearance));
    Q_EMIT buttonAppearanceChanged(appearance);
}

} // namespace tillery
