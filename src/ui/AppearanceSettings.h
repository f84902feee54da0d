#pragma once

#include <QWidget>

class QComboBox;
class QPushButton;

namespace tillery {

class ViewSettings;

// Settings ▸ Appearance: how buttons look and how diffs are laid out.
class AppearanceSettings final : public QWidget {
    Q_OBJECT

public:
    explicit AppearanceSettings(ViewSettings &settings, QWidget *parent = nullptr);

    QComboBox *buttonAppearance() const { return m_buttons; }
    QComboBox *diffLayout() const { return m_layout; }
    QPushButton *preview() const { return m_preview; }

private:
    QComboBox *m_buttons;
    QComboBox *m_layout;
    QPushButton *m_preview;
};

} // namespace tillery
