#include "compose/PictureBox.h"

#include <QPaintEvent>
#include <QPainter>

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {
    // Every pixel is painted by us: no background fill under each of a fade's 65 repaints.
    setAttribute(Qt::WA_OpaquePaintEvent, true);
    setAttribute(Qt::WA_NoSystemBackground, true);
}

void PictureBox::setPicture(QImage image) {
    // Opaque 32-bit pixels draw as plain copies; an image with real alpha would be blended.
    if (image.format() == QImage::Format_ARGB32 ||
        image.format() == QImage::Format_ARGB32_Premultiplied)
        image.reinterpretAsFormat(QImage::Format_RGB32);
    else if (!image.isNull() && image.format() != QImage::Format_RGB32)
        image = image.convertToFormat(QImage::Format_RGB32);
    picture_ = std::move(image);
    update();
}

void PictureBox::clearPicture() {
    picture_ = QImage();
    update();
}

void PictureBox::paintEvent(QPaintEvent* event) {
    QPainter p(this);
    p.setCompositionMode(QPainter::CompositionMode_Source);
    const QRect dirty = event->rect();
    const QRect shown = dirty.intersected(picture_.rect());
    if (!shown.isEmpty()) p.drawImage(shown.topLeft(), picture_, shown);
    // Black where the picture ends, as an empty picture box shows.
    const QRegion rest = QRegion(dirty).subtracted(QRegion(shown));
    for (const QRect& r : rest)
        p.fillRect(r, Qt::black);
}
