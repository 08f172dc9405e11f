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

void PhotoLabel::setOverlays(std::vector<Overlay> overlays) {
    overlays_ = std::move(overlays);
    for (const Overlay& o : overlays_)
        update(o.place.translated(-pos()));
}

std::vector<QWidget*> PhotoLabel::clearOverlays() {
    std::vector<QWidget*> sources;
    for (const Overlay& o : overlays_) {
        update(o.place.translated(-pos()));
        sources.push_back(o.source);
    }
    overlays_.clear();
    return sources;
}

void PhotoLabel::moveUnderOverlays(QPoint to) {
    const QPoint shift = to - pos();
    move(to);
    // The shift carried the pictures along with the photo: where they were drawn and where the
    // shift left them are painted again.
    for (const Overlay& o : overlays_) {
        const QRect there = o.place.translated(-pos());
        update(there.united(there.translated(shift)));
    }
}

void PhotoLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (overlays_.empty()) return;
    QPainter p(this);
    for (const Overlay& o : overlays_)
        p.drawPixmap(o.place.topLeft() - pos(), o.picture);
}
