#include "platform/VbTimer.h"

VbTimer::VbTimer(int intervalMs, bool enabled, QObject* parent)
    : QObject(parent), interval_(intervalMs > 0 ? intervalMs : 1000) {
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &VbTimer::fire);
    setEnabled(enabled);
}

bool VbTimer::setInterval(int intervalMs) {
    if (intervalMs <= 0) return false;
    interval_ = intervalMs;
    if (enabled_) timer_.start(interval_);
    return true;
}

void VbTimer::setEnabled(bool enabled) {
    // Enabling a running timer leaves its countdown alone, so that a stream of requests (every
    // pointer move during the hand-over, say) cannot hold it off for ever.
    if (enabled && enabled_ && timer_.isActive()) return;
    enabled_ = enabled;
    if (enabled)
        timer_.start(interval_);
    else
        timer_.stop();
}

void VbTimer::fire() {
    if (handler_) handler_();
}
