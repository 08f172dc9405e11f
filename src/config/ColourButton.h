#pragma once

#include <QColor>
#include <QPushButton>
#include <cstdint>

// A button whose back colour is a setting. Colours are kept as the preferences file writes them:
// a 32-bit value with red in the low byte.
class ColourButton : public QPushButton {
    Q_OBJECT
public:
    explicit ColourButton(const QString& text, QWidget* parent = nullptr);

    std::uint32_t BackColor() const { return value_; }
    void setBackColor(std::uint32_t value);
    QColor colour() const;

private:
    std::uint32_t value_ = 0;
};

// Colour value (red in the low byte) to and from a colour.
QColor ColourFromValue(std::uint32_t value);
std::uint32_t ValueFromColour(const QColor& colour);
