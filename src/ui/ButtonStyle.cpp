#include "ui/ButtonStyle.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace tillery {

QString buttonStyleSheet(ButtonAppearance appearance, bool primary)
{
    if (appearance == ButtonAppearance::platformDefault)
        return QString();
    // Its own light colours on every palette, as the old style had.
    const QString plain = u"QPushButton { color: #1c1c1c; border: 1px solid #8c8c8c; border-radius: 5px;"
                          " padding: 3px 16px; background: qlineargradient(x1:0, y1:0, x2:0, y2:1,"
                          " stop:0 #ffffff, stop:0.5 #f1f1f1, stop:0.51 #e6e6e6, stop:1 #f4f4f4); }"
                          " QPushButton:pressed { background: qlineargradient(x1:0, y1:0, x2:0, y2:1,"
                          " stop:0 #cfcfcf, stop:1 #e9e9e9); }"
                          " QPushButton:disabled { color: #9b9b9b; border-color: #b9b9b9; }"
                          " QPushButton:focus { border-color: #5b8fd8; }"_s;
    const QString blue = u" QPushButton:enabled { color: #ffffff; border-color: #2f5fa8; background:"
                         " qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #8fc0f7, stop:0.5 #5a9bea,"
                         " stop:0.51 #3f86e3, stop:1 #6fb0f4); }"
                         " QPushButton:enabled:pressed { background: qlineargradient(x1:0, y1:0, x2:0, y2:1,"
                         " stop:0 #3a73c4, stop:1 #5c98e0); }"_s;
    return primary ? plain + blue : plain;
}

void followButtonAppearance(QPushButton *button, ViewSettings &settings, bool primary)
{
    button->setStyleSheet(buttonStyleSheet(settings.buttonAppearance(), primary));
    QObject::connect(&settings, &ViewSettings::buttonAppearanceChanged, button,
                     [button, primary](ButtonAppearance appearance) {
                         button->setStyleSheet(buttonStyleSheet(appearance, primary));
                     });
}

} // namespace tillery
