#pragma once

#include <QImage>
#include <QWidget>

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
