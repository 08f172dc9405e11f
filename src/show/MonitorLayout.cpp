#include "show/MonitorLayout.h"

#include "app/VbNumbers.h"
#include "compose/ResizeRules.h"

#include <algorithm>

namespace monitors {
namespace {

constexpr int Unbounded = 32000;

void SetSlot(MonitorTables& t, int i, int left, int top, int width, int height) {
    const auto s = static_cast<std::size_t>(i);
    t.MonitorLeft[s] = left;
    t.MonitorTop[s] = top;
    t.MonitorWidth[s] = width;
    t.MonitorHeight[s] = height;
}

} // namespace

MonitorInfo GetMonitorInfo(const std::vector<ScreenInfo>& screens) {
    MonitorInfo info;
    info.minLeft = Unbounded;
    info.minTop = Unbounded;
    info.maxRight = -Unbounded;
    info.maxBottom = -Unbounded;
    const int count = std::min(static_cast<int>(screens.size()), MaxMonitors);
    for (int n = 1; n <= count; ++n) {
        const ScreenInfo& s = screens[static_cast<std::size_t>(n - 1)];
        const QString name = s.name.isEmpty() ? QStringLiteral("Default Monitor") : s.name;
        const QString device = s.model.trimmed().isEmpty() ? name : s.model.trimmed();
        if (!info.report.isEmpty()) info.report += QLatin1Char('\n');
        info.report += QStringLiteral("%1. %2 on %3 ").arg(n).arg(name, device);
        if (s.primary) info.report += QStringLiteral("primary, ");
        info.report += QStringLiteral("%1,%2 - %3 x %4 @ %5-bit - %6 Hz")
                           .arg(s.left)
                           .arg(s.top)
                           .arg(s.width)
                           .arg(s.height)
                           .arg(s.depth)
                           .arg(QString::number(s.refresh, 'g', 6));
        if (s.primary && info.primary == 0) info.primary = static_cast<std::int16_t>(n);
        const auto slot = static_cast<std::size_t>(n);
        info.records[slot] = {s.left, s.top, s.width, s.height};
        // Every screen the desktop lists is attached to it.
        info.enabled[slot] = true;
        info.minLeft = std::min(info.minLeft, s.left);
        info.minTop = std::min(info.minTop, s.top);
        info.maxRight = std::max(info.maxRight, s.left + s.width);
        info.maxBottom = std::max(info.maxBottom, s.top + s.height);
    }
    return info;
}

MonitorTables ScreenLayout(const MonitorInfo& info, bool multiMonitors, bool useMinHeight) {
    MonitorTables t;
    const bool any = std::any_of(info.enabled.begin() + 1, info.enabled.end(),
                                 [](bool enabled) { return enabled; });
    // Without any monitor the bounds never moved from their start values; the form then has
    // no size rather than a negative one.
    if (any) {
        t.DesktopLeft = info.minLeft;
        t.DesktopRight = info.maxRight;
        t.DesktopTop = info.minTop;
        t.DesktopBottom = info.maxBottom;
    }
    for (int i = 1; i <= MaxMonitors; ++i) {
        const auto s = static_cast<std::size_t>(i);
        const auto& r = info.records[s];
        t.MonitorEnabled[s] = info.enabled[s];
        // A slot without a monitor stays at 0 instead of taking the desktop's offset.
        if (!info.enabled[s] && r[2] == 0 && r[3] == 0) continue;
        SetSlot(t, i, r[0] - t.DesktopLeft, r[1] - t.DesktopTop, r[2], r[3]);
        if (!info.enabled[s]) continue;
        ++t.ActiveMonitors;
        t.MaxTop = std::max(t.MaxTop, r[1]);
        if (r[3] > 0) t.MinBottom = std::min(t.MinBottom, r[1] + r[3]);
    }

    t.PrimaryMonitor = info.primary;
    if (t.PrimaryMonitor == 0) {
        // The desktop always has a primary screen, but it may be past the fourth; the first
        // monitor stands in for it then.
        for (int i = 1; i <= MaxMonitors && t.PrimaryMonitor == 0; ++i)
            if (info.enabled[static_cast<std::size_t>(i)])
                t.PrimaryMonitor = static_cast<std::int16_t>(i);
    }
    const auto p = static_cast<std::size_t>(t.PrimaryMonitor);

    if (multiMonitors) {
        t.FormLeft = t.DesktopLeft;
        t.FormTop = t.DesktopTop;
        t.FormWidth = t.DesktopRight - t.DesktopLeft;
        t.FormHeight = t.DesktopBottom - t.DesktopTop;
        SetSlot(t, 0, 0, 0, t.FormWidth, t.FormHeight);
        if (useMinHeight && any) {
            t.MinHeightTop = t.MaxTop - t.DesktopTop;
            t.MinHeight = t.MinBottom - t.MaxTop;
        }
        // The status panel and the splash belong on the primary monitor.
        if (t.PrimaryMonitor > 0 && t.MonitorEnabled[p]) {
            t.CaptionLeft = t.MonitorLeft[p];
            t.CaptionTop = t.MonitorTop[p];
            t.CaptionWidth = t.MonitorWidth[p];
            t.CaptionHeight = t.MonitorHeight[p];
        } else {
            t.CaptionWidth = t.FormWidth;
            t.CaptionHeight = t.FormHeight;
        }
    } else {
        const auto& r = info.records[p];
        // The form stands on the primary monitor, wherever the desktop puts that.
        t.FormLeft = t.PrimaryMonitor > 0 ? r[0] : 0;
        t.FormTop = t.PrimaryMonitor > 0 ? r[1] : 0;
        t.FormWidth = t.PrimaryMonitor > 0 ? r[2] : 0;
        t.FormHeight = t.PrimaryMonitor > 0 ? r[3] : 0;
        SetSlot(t, 0, 0, 0, t.FormWidth, t.FormHeight);
        t.MinHeightTop = 0;
        t.MinHeight = t.FormHeight;
        t.CaptionWidth = t.FormWidth;
        t.CaptionHeight = t.FormHeight;
    }
    return t;
}

void TestMode(MonitorTables& t, std::int16_t mode) {
    if (mode < 1 || mode > 4) return;
    t.MonitorEnabled.fill(false);
    for (int i = 1; i <= MaxMonitors; ++i)
        SetSlot(t, i, 0, 0, 0, 0);
    switch (mode) {
    case 1:
        t.FormWidth = 700;
        SetSlot(t, 1, 0, 0, 700, t.FormHeight);
        t.ActiveMonitors = 1;
        break;
    case 2:
        t.FormWidth = 1400;
        t.FormHeight = 525;
        SetSlot(t, 1, 0, 0, 700, 525);
        SetSlot(t, 2, 700, 0, 700, 525);
        t.ActiveMonitors = 2;
        break;
    case 3:
        t.FormWidth = 1400;
        t.FormHeight = 350;
        // 1400 does not divide by three; the last pixels go to the later monitors.
        for (int i = 1; i <= 3; ++i)
            SetSlot(t, i, (i - 1) * 1400 / 3, 0, i * 1400 / 3 - (i - 1) * 1400 / 3, 350);
        t.ActiveMonitors = 3;
        break;
    default:
        t.FormWidth = 1400;
        t.FormHeight = 600;
        SetSlot(t, 1, 0, 0, 800, 600);
        SetSlot(t, 2, 800, 40, 600, 560);
        t.ActiveMonitors = 2;
        break;
    }
    for (int i = 1; i <= t.ActiveMonitors; ++i)
        t.MonitorEnabled[static_cast<std::size_t>(i)] = true;
    SetSlot(t, 0, 0, 0, t.FormWidth, t.FormHeight);
    t.DesktopLeft = t.FormLeft;
    t.DesktopTop = t.FormTop;
    t.DesktopRight = t.FormLeft + t.FormWidth;
    t.DesktopBottom = t.FormTop + t.FormHeight;
    t.MaxTop = t.FormTop + (mode == 4 ? 40 : 0);
    t.MinBottom = t.FormTop + t.FormHeight;
    t.MinHeightTop = t.MaxTop - t.FormTop;
    t.MinHeight = t.MinBottom - t.MaxTop;
    t.PrimaryMonitor = 1;
    t.CaptionLeft = 0;
    t.CaptionTop = 0;
    t.CaptionWidth = t.MonitorWidth[1];
    t.CaptionHeight = t.MonitorHeight[1];
}

QRect MonitorRect(const MonitorTables& t, int monitor) {
    const auto s = static_cast<std::size_t>(monitor < 1 || monitor > MaxMonitors ? 0 : monitor);
    return {t.MonitorLeft[s], t.MonitorTop[s], t.MonitorWidth[s], t.MonitorHeight[s]};
}

QPoint PausedOverlayPlace(const MonitorTables& t, int monitor, QSize overlay) {
    const QRect m = MonitorRect(t, monitor);
    return {
        static_cast<int>(vb::RoundHalfEven(m.x() + (m.width() - overlay.width()) / 2.0)),
        static_cast<int>(vb::RoundHalfEven(m.y() + (m.height() - overlay.height()) * 9 / 10.0))};
}

QPoint JumpOverlayPlace(const MonitorTables& t, int monitor, QSize overlay) {
    const QRect m = MonitorRect(t, monitor);
    return {static_cast<int>(vb::RoundHalfEven(m.x() + (m.width() - overlay.width()) / 2.0)),
            static_cast<int>(vb::RoundHalfEven(m.y() + (m.height() - overlay.height()) / 5.0))};
}

std::int16_t NextMonitorInTurn(std::int16_t current,
                               const std::array<bool, MaxMonitors + 1>& enabled) {
    if (current < 1) return 1;
    int m = current;
    for (int step = 0; step < MaxMonitors; ++step) {
        m = m >= MaxMonitors ? 1 : m + 1;
        if (enabled[static_cast<std::size_t>(m)]) return static_cast<std::int16_t>(m);
    }
    return 0;
}

MonitorChoice ChooseMonitorSet(const MonitorTables& t, const MonitorChoiceRequest& r) {
    MonitorChoice out;
    out.currentMonitor = r.currentMonitor;
    out.height = r.height;
    if (!r.multiMonitors || !r.imagePerScreen) {
        out.monitorSet = 0;
        if (r.multiMonitors) out.log << QStringLiteral("MultiMonitors enabled ... ");
    } else {
        const std::int16_t m = NextMonitorInTurn(r.currentMonitor, t.MonitorEnabled);
        out.currentMonitor = m;
        out.log << QStringLiteral(" ... the next monitor is  %1").arg(m);
        const auto s = static_cast<std::size_t>(m);
        const resize::PanoResult pano = resize::NextDIBIsAnHPano(
            r.width, r.height, t.MonitorWidth[s], t.MonitorHeight[s], r.widescreenFactor);
        out.log << pano.log;
        out.height = pano.height;
        out.isPano = pano.isPano;
        if (!pano.isPano)
            out.monitorSet = m;
        else if (r.layout == StackLayout)
            out.monitorSet = r.stopStackIfPano ? 0 : m;
        else if (r.layout == FourUpLayout)
            out.monitorSet = m;
        else
            // A panorama in the Normal layout spreads over every monitor.
            out.monitorSet = 0;
    }
    const QRect frame = MonitorRect(t, out.monitorSet);
    out.frameLeft = frame.x();
    out.frameTop = frame.y();
    out.frameWidth = frame.width();
    out.frameHeight = frame.height();
    if (out.monitorSet == 0 && r.useMinHeight) {
        out.frameTop = t.MinHeightTop;
        out.frameHeight = t.MinHeight;
    }
    out.log << QStringLiteral("Monitor set %1 : frame at %2,%3  %4 x %5")
                   .arg(out.monitorSet)
                   .arg(out.frameLeft)
                   .arg(out.frameTop)
                   .arg(out.frameWidth)
                   .arg(out.frameHeight);
    return out;
}

} // namespace monitors
