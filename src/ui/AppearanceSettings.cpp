#include "ui/AppearanceSettings.h"

#include "ui/ButtonStyle.h"
#include "ui/SheetParts.h"
#include "ui/ViewSettings.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

AppearanceSettings::AppearanceSettings(ViewSettings &settings, QWidget *parent)
    : QWidget(parent)
    , m_buttons(new QComboBox)
    , m_layout(new QComboBox)
    , m_preview(new QPushButton(tr("Commit 2 Files")))
{
    for (const ButtonAppearance appearance : allButtonAppearances())
        m_buttons->addItem(rawValue(appearance), static_cast<int>(appearance));
    m_buttons->setAccessibleName(tr("Buttons"));
    m_buttons->setCurrentIndex(static_cast<int>(settings.buttonAppearance()));
    connect(m_buttons, &QComboBox::activated, &settings, [this, &settings](int index) {
        settings.setButtonAppearance(static_cast<ButtonAppearance>(m_buttons->itemData(index).toInt()));
    });
    connect(&settings, &ViewSettings::buttonAppearanceChanged, this,
            [this](ButtonAppearance appearance) { m_buttons->setCurrentIndex(static_cast<int>(appearance)); });
    m_preview->setAccessibleName(tr("Preview of the buttons"));
    // A picture of a button, not one to press.
    m_preview->setFocusPolicy(Qt::NoFocus);
    m_preview->setAttribute(Qt::WA_TransparentForMouseEvents);
    followButtonAppearance(m_preview, settings, true);

    m_layout->addItem(tr("Unified"), static_cast<int>(DiffCanvas::Layout::unified));
    m_layout->addItem(tr("Split"), static_cast<int>(DiffCanvas::Layout::split));
    m_layout->setAccessibleName(tr("Diff layout"));
    m_layout->setCurrentIndex(settings.diffLayout() == DiffCanvas::Layout::split ? 1 : 0);
    connect(m_layout, &QComboBox::activated, &settings, [this, &settings](int index) {
        settings.setDiffLayout(static_cast<DiffCanvas::Layout>(m_layout->itemData(index).toInt()));
    });
    connect(&settings, &ViewSettings::diffLayoutChanged, this, [this](DiffCanvas::Layout layout) {
        m_layout->setCurrentIndex(layout == DiffCanvas::Layout::split ? 1 : 0);
    });

    auto *buttonRow = new QHBoxLayout;
    buttonRow->addWidget(m_buttons);
    buttonRow->addSpacing(12);
    buttonRow->addWidget(m_preview);
    buttonRow->addStretch();
    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow(tr("Buttons:"), buttonRow);
    form->addRow(u""_s, secondaryLabel(tr("The Commit button and the buttons of the start page follow this.")));
    form->addRow(tr("Diff layout:"), m_layout);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addStretch();
}

} // namespace tillery
