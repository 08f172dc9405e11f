#include "platform/Clock.h"

#include <QThread>
#include <optional>

namespace platform {
namespace {
std::optional<QDateTime> g_fixed;

QDateTime Precise() {
    return g_fixed ? *g_fixed : QDateTime::currentDateTime();
}
} // namespace

QDateTime Now() {
    QDateTime t = Precise();
    t.setTime(QTime(t.time().hour(), t.time().minute(), t.time().second()));
    return t;
}

QDate Today() {
    return Precise().date();
}

double SecondsSinceMidnight() {
    return Precise().time().msecsSinceStartOfDay() / 1000.0;
}

void Sleep(qint64 milliseconds) {
    if (milliseconds <= 0) return;
    if (g_fixed) {
        *g_fixed = g_fixed->addMSecs(milliseconds);
        return;
    }
    QThread::msleep(static_cast<unsigned long>(milliseconds));
}

void SetNow(const QDateTime& moment) {
    g_fixed = moment;
}

void AdvanceClock(qint64 milliseconds) {
    if (!g_fixed) g_fixed = QDateTime::currentDateTime();
    g_fixed = g_fixed->addMSecs(milliseconds);
}

void UseSystemClock() {
    g_fixed.reset();
}

bool ClockIsSet() {
    return g_fixed.has_value();
}

} // namespace platform
