#pragma once

#include <array>

// The arithmetic of the configuration window, kept apart from the widgets so that it can be
// checked without a display. All sizes are in pixels.

// The window's two heights for a screen of this many pixels: collapsed and expanded.
struct ConfigHeights {
    int collapsed;
    int expanded;
};
ConfigHeights ConfigFormHeights(int screenHeightPixels);

// Height of a panel that shows only its heading.
inline constexpr int CollapsedPanelHeight = 25;
// One tick of a panel's opening or closing: half of what remains, at least 4, never past the
// target. The result is signed the way the height must move.
int PanelAnimationStep(int height, int target);
// One tick of the window growing or shrinking.
inline constexpr int WindowResizeStep = 30;

// Slider knobs travel from the bar's left edge to 12 pixels short of its right edge.
inline constexpr int SliderKnobStop = 12;
int SliderKnobPosition(float percent, int barLeft, int barWidth);
int SliderPercentAt(int knobLeft, int barLeft, int barWidth);

// Sky tabs are measured at their centre: zone 0 is the bar's left edge, zone 96 its right.
inline constexpr int SkyZones = 96;
int SkyTabPosition(int zone, int barLeft, int barWidth, int tabWidth);
int SkyZoneAt(int tabLeft, int barLeft, int barWidth, int tabWidth);

// The night shading of the sky bar, from the tabs' left edges. When the end tab stands left of
// the start tab the night wraps past midnight and both masks show.
struct SkyMaskSpan {
    bool visible = false;
    int left = 0;
    int width = 0;
};
std::array<SkyMaskSpan, 2> SkyMaskSpans(int startTabLeft, int endTabLeft, int barLeft, int barWidth,
                                        int tabWidth);

// Restores the sum of the layout percentages to 100 after the layout changedIndex moved: 0.1 at
// a time, handed round the other checked layouts. One checked layout is pinned at 100 and the
// others at 0; none checked changes nothing.
void BalanceLayoutPercents(std::array<float, 3>& percent, const std::array<bool, 3>& checked,
                           int changedIndex);
