#pragma once

#include "app/Forms.h"

#include <QLabel>
#include <QRect>
#include <QSize>
#include <QWidget>
#include <cstdint>

class VbTimer;

// Where the logo goes inside a preview pane: 90% of the pane's width, the control's own
// proportions kept, centred; it may grow taller than the pane.
QRect FitLogo(QSize form, QSize control);

// The logo drawn into the small preview pane of a host window.
class frmPreview : public QWidget, public FormSingleton<frmPreview> {
    Q_OBJECT
public:
    frmPreview();
    ~frmPreview() override;

    // Shows the logo inside the window with this X11 id, at its size, until it goes away.
    static void RunPreview(std::int64_t handle);

    void UpdateLogo();
    void Form_Resize() { UpdateLogo(); }
    void beforeUnload() {}

    QLabel* Image1 = nullptr;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void PollHost();

    VbTimer* hostPoll_ = nullptr;
    QSize lastHostSize_;
};
