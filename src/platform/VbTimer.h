#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

// A timer with the classic Interval/Enabled pair: enabling a stopped timer starts the countdown, a
// non-positive interval is refused and the old one stays, and the handler runs on the event
// loop each time the interval passes while enabled.
class VbTimer : public QObject {
    Q_OBJECT
public:
    explicit VbTimer(int intervalMs, bool enabled = false, QObject* parent = nullptr);

    int Interval() const { return interval_; }
    // False when the value was refused.
    bool setInterval(int intervalMs);

    bool Enabled() const { return enabled_; }
    void setEnabled(bool enabled);

    void setHandler(std::function<void()> handler) { handler_ = std::move(handler); }
    // Runs the handler as if the interval had passed (tests, and the nested ticks of long work).
    void fire();

private:
    QTimer timer_;
    int interval_;
    bool enabled_ = false;
    std::function<void()> handler_;
};
