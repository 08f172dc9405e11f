#pragma once

#include <QImage>
#include <QLabel>
#include <QPixmap>
#include <QWidget>
#include <vector>

// A surface that shows one 32-bit picture at its top left, and black where the picture does
// not reach. The picture is kept as an image so that a fade can blend into it in place and
// repaint only what changed.
class PictureBox : public QWidget {
    Q_OBJECT
public:
    explicit PictureBox(QWidget* parent = nullptr);

    const QImage& picture() const { return picture_; }
    // For blending in place: the caller repaints what it changed.
    QImage& picture() { return picture_; }
    void setPicture(QImage image);
    void clearPicture();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QImage picture_;
};

// The photo of the frame: a label holding the whole canvas. While a panorama travels it can
// also draw pictures of the caption boxes, fixed on the screen: a sibling box over the photo
// would keep the toolkit from shifting the screen at each step, and cost a repaint of all of it.
class PhotoLabel : public QLabel {
    Q_OBJECT
public:
    explicit PhotoLabel(QWidget* parent = nullptr) : QLabel(parent) {}

    struct Overlay {
        QWidget* source; // the widget pictured, hidden meanwhile
        QRect place;     // in the parent's coordinates
        QPixmap picture;
    };
    void setOverlays(std::vector<Overlay> overlays);
    // Drops the pictures and gives back the widgets they stood for.
    std::vector<QWidget*> clearOverlays();
    bool hasOverlays() const { return !overlays_.empty(); }
    // Moves the photo, repainting what the move shifted of the fixed pictures.
    void moveUnderOverlays(QPoint to);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<Overlay> overlays_;
};
