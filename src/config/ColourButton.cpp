#include "config/ColourButton.h"

QColor ColourFromValue(std::uint32_t value) {
    return QColor(static_cast<int>(value & 0xFF), static_cast<int>((value >> 8) & 0xFF),
                  static_cast<int>((value >> 16) & 0xFF));
}

std::uint32_t ValueFromColour(const QColor& colour) {
    return static_cast<std::uint32_t>(colour.red()) |
           (static_cast<std::uint32_t>(colour.green()) << 8) |
           (static_cast<std::uint32_t>(colour.blue()) << 16);
}

ColourButton::ColourButton(const QString& text, QWidget* parent) : QPushButton(text, parent) {
    setBackColor(0);
}

void ColourButton::setBackColor(std::uint32_t value) {
    value_ = value;
    const QColor c = ColourFromValue(value);
    const QString ink = c.lightness() > 140 ? QStringLiteral("#111") : QStringLiteral("#f4f4f4");
    setStyleSheet(QStringLiteral("QPushButton { background: %1; color: %2; border: 1px solid "
                                 "#8090a0; border-radius: 4px; padding: 4px 10px; }")
                      .arg(c.name(), ink));
}

QColor ColourButton::colour() const {
    return ColourFromValue(value_);
}
