#include "ui/ViewSettings.h"

#include "model/ModelSettings.h"

using namespace Qt::StringLiterals;

namespace tillery {

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

} // namespace tillery
