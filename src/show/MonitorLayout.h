#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <array>
#include <cstdint>
#include <vector>

// The arithmetic of the monitors: from the screens the desktop reports to the rectangles the
// show works with, and which monitor each frame goes to. No window is needed.
namespace monitors {

// Slot 0 is the whole surface of the show, slots 1 to 4 the monitors.
constexpr int MaxMonitors = 4;

// One screen as the desktop reports it, in desktop coordinates.
struct ScreenInfo {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool primary = false;
    QString name;
    // Manufacturer and model where the desktop knows them.
    QString model;
    int depth = 0;
    double refresh = 0.0;
};

// What the screens say, before any of the show's rules: one record (left, top, width, height,
// in desktop coordinates) per slot, the bounds of the attached ones, and a report for the log.
struct MonitorInfo {
    int minLeft = 0;
    int maxRight = 0;
    int minTop = 0;
    int maxBottom = 0;
    std::array<std::array<int, 4>, MaxMonitors + 1> records{};
    std::array<bool, MaxMonitors + 1> enabled{};
    std::int16_t primary = 0;
    QString report;
};

// The show's monitor tables. MonitorLeft and MonitorTop are relative to the form's top left.
struct MonitorTables {
    std::array<int, MaxMonitors + 1> MonitorLeft{};
    std::array<int, MaxMonitors + 1> MonitorTop{};
    std::array<int, MaxMonitors + 1> MonitorWidth{};
    std::array<int, MaxMonitors + 1> MonitorHeight{};
    std::array<bool, MaxMonitors + 1> MonitorEnabled{};
    int DesktopLeft = 0, DesktopRight = 0, DesktopTop = 0, DesktopBottom = 0;
    int MaxTop = -32000;
    int MinBottom = 32000;
    std::int16_t ActiveMonitors = 0;
    // The band every monitor shows, for frames spread across monitors of different heights.
    int MinHeightTop = 0;
    int MinHeight = 0;
    int FormLeft = 0, FormTop = 0, FormWidth = 0, FormHeight = 0;
    int CaptionLeft = 0, CaptionTop = 0, CaptionWidth = 0, CaptionHeight = 0;
    std::int16_t PrimaryMonitor = 0;
};

// At most the first four screens, in the order given.
MonitorInfo GetMonitorInfo(const std::vector<ScreenInfo>& screens);

// The tables for the show: with multiMonitors the form spans every monitor, else it is the
// primary monitor alone.
MonitorTables ScreenLayout(const MonitorInfo& info, bool multiMonitors, bool useMinHeight);

// Development aid: replaces the monitors by a fixed layout, so that several monitors can be
// tried on one screen. Mode 0 leaves everything as it is.
void TestMode(MonitorTables& tables, std::int16_t mode);

// The rectangle of a slot relative to the form; slot 0, the whole surface, for any slot that
// is not a monitor.
QRect MonitorRect(const MonitorTables& tables, int monitor);

// Where the pause mark and the jump marks of a monitor stand: centred across, the pause mark
// low down so it hides little of the photo, the jump marks high up.
QPoint PausedOverlayPlace(const MonitorTables& tables, int monitor, QSize overlay);
QPoint JumpOverlayPlace(const MonitorTables& tables, int monitor, QSize overlay);

// The monitor whose turn comes after current, in slot order and wrapping; 1 when no turn has
// been taken yet. 0 when no monitor is enabled.
std::int16_t NextMonitorInTurn(std::int16_t current,
                               const std::array<bool, MaxMonitors + 1>& enabled);

// Layouts of a frame, as AssembleCanvas numbers them.
enum LayoutKind : std::int16_t { NormalLayout = 0, StackLayout = 1, FourUpLayout = 2 };

struct MonitorChoiceRequest {
    std::int16_t currentMonitor = 0;
    bool multiMonitors = true;
    bool imagePerScreen = false;
    bool useMinHeight = false;
    std::int16_t layout = NormalLayout;
    bool stopStackIfPano = true;
    double widescreenFactor = 1.0;
    int width = 0;
    int height = 0;
};

struct MonitorChoice {
    // The monitor whose turn this was; unchanged when monitors take no turns.
    std::int16_t currentMonitor = 0;
    std::int16_t monitorSet = 0;
    bool isPano = false;
    // The image's height as the panorama test left it.
    int height = 0;
    int frameLeft = 0, frameTop = 0, frameWidth = 0, frameHeight = 0;
    QStringList log;
};

// Where the next image goes: slot 0 unless each monitor has its own image; then the monitors
// take turns, except that a panorama spreads over all of them in the Normal layout.
MonitorChoice ChooseMonitorSet(const MonitorTables& tables, const MonitorChoiceRequest& request);

} // namespace monitors
