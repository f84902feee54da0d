#pragma once

#include "ui/DiffCanvas.h"

#include <QObject>
#include <QSettings>

namespace tillery {

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

    QSettings &store() { return m_settings; }

Q_SIGNALS:
    void diffLayoutChanged(tillery::DiffCanvas::Layout layout);

private:
    QSettings &m_settings;
};

} // namespace tillery
