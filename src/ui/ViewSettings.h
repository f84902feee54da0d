#pragma once

#include "ui/DiffCanvas.h"

#include <QObject>
#include <QSettings>

namespace tillery {

// How the buttons that follow the setting look: the platform's own, or
// rounded, bordered and shaded in an older desktop style.
enum class ButtonAppearance { platformDefault, classic };
QString rawValue(ButtonAppearance appearance);
QList<ButtonAppearance> allButtonAppearances();

// The settings that views bind to directly, read and written under their
// keys in the one settings store, with a signal so that every view follows
// a change at once.
class ViewSettings final : public QObject {
    Q_OBJECT

public:
    explicit ViewSettings(QSettings &settings, QObject *parent = nullptr);

    // "diffLayout.v1": "Unified" or "Split"; anything else reads as unified.
    DiffCanvas::Layout diffLayout() const;
    void setDiffLayout(DiffCanvas::Layout layout);

    // "buttonAppearance.v1": "macOS Default" or "Mac OS 10.7"; anything else
    // reads as the default.
    ButtonAppearance buttonAppearance() const;
    void setButtonAppearance(ButtonAppearance appearance);

    QSettings &store() { return m_settings; }

Q_SIGNALS:
    void diffLayoutChanged(tillery::DiffCanvas::Layout layout);
    void buttonAppearanceChanged(tillery::ButtonAppearance appearance);

private:
    QSettings &m_settings;
};

} // namespace tillery
