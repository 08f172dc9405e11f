#include "config/ConfigGeometry.h"

#include "app/VbNumbers.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

ConfigHeights ConfigFormHeights(int screenHeightPixels) {
    if (screenHeightPixels < 481) return {480, 520};
    if (screenHeightPixels <= 600) return {509, 600};
    // Large screens lose more to the window's margin, so 1024 gives a smaller window than 1023.
    if (screenHeightPixels <= 1023)
        return {screenHeightPixels - 100 - 150, screenHeightPixels - 100};
    return {screenHeightPixels - 200 - 150, screenHeightPixels - 200};
}

int PanelAnimationStep(int height, int target) {
    const int remaining = std::abs(target - height);
    int step = std::abs(remaining / 2);
    if (step < 4) step = 4;
    if (step > remaining) step = remaining;
    return target >= height ? step : -step;
}

int SliderKnobPosition(float percent, int barLeft, int barWidth) {
    const int minimum = barLeft;
    const int maximum = barLeft + barWidth - SliderKnobStop;
    const double span = static_cast<double>(maximum - minimum);
    int position =
        static_cast<int>(std::floor(static_cast<double>(percent) / 100.0 * span)) + minimum;
    return std::clamp(position, minimum, std::max(minimum, maximum));
}

int SliderPercentAt(int knobLeft, int barLeft, int barWidth) {
    const int minimum = barLeft;
    const int maximum = barLeft + barWidth - SliderKnobStop;
    if (maximum <= minimum) return 0;
    const int position = std::clamp(knobLeft, minimum, maximum);
    return static_cast<int>(std::floor(static_cast<double>(position - minimum) /
                                       static_cast<double>(maximum - minimum) * 100.0));
}

int SkyTabPosition(int zone, int barLeft, int barWidth, int tabWidth) {
    const int minimum = barLeft - tabWidth / 2;
    const int maximum = barLeft + barWidth - tabWidth / 2;
    return zone * (maximum - minimum) / SkyZones + minimum;
}

int SkyZoneAt(int tabLeft, int barLeft, int barWidth, int tabWidth) {
    const int minimum = barLeft - tabWidth / 2;
    const int maximum = barLeft + barWidth - tabWidth / 2;
    if (maximum <= minimum) return 0;
    const int position = std::clamp(tabLeft, minimum, maximum);
    // Halves go to the even zone, as every other rounding of the program does.
    return vb::CInt(static_cast<double>(position - minimum) /
                    static_cast<double>(maximum - minimum) * SkyZones)
        .value_or(0);
}

std::array<SkyMaskSpan, 2> SkyMaskSpans(int startTabLeft, int endTabLeft, int barLeft, int barWidth,
                                        int tabWidth) {
    const int startCentre = startTabLeft + tabWidth / 2;
    const int endCentre = endTabLeft + tabWidth / 2;
    std::array<SkyMaskSpan, 2> spans{};
    if (endTabLeft < startTabLeft) {
        spans[0] = {true, startCentre, barLeft + barWidth - startCentre};
        spans[1] = {true, barLeft, endCentre - barLeft};
    } else {
        spans[0] = {true, startCentre, endCentre - startCentre};
    }
    return spans;
}

void BalanceLayoutPercents(std::array<float, 3>& percent, const std::array<bool, 3>& checked,
                           int changedIndex) {
    const auto count = std::count(checked.begin(), checked.end(), true);
    if (count == 1) {
        for (std::size_t i = 0; i < 3; ++i)
            percent[i] = checked[i] ? 100.0f : 0.0f;
        return;
    }
    if (count < 2) return;

    // The sum is taken before each pass's step, so the pass that finds 100 still takes its
    // step; the whole numbers shown afterwards hide the tenth. A round in which no layout can
    // move (the shares of unchecked layouts alone pass 100) ends the walk instead of hanging.
    // A share that may move is walked a tenth at a time, so it must lie in 0..100: a hand-edited
    // file can hold any single, and from 1e30 (where a tenth no longer changes the number) or
    // from infinity the walk would never end.
    for (std::size_t i = 0; i < 3; ++i)
        if (checked[i] && static_cast<int>(i) != changedIndex)
            percent[i] = std::isnan(percent[i]) ? 0.0f : std::clamp(percent[i], 0.0f, 100.0f);

    std::size_t j = 0;
    int idleSteps = 0;
    for (;;) {
        float sum = 0.0f;
        for (float p : percent)
            sum += p;
        const bool mayMove = checked[j] && static_cast<int>(j) != changedIndex;
        bool moved = false;
        if (sum < 100.0f && mayMove && percent[j] < 100.0f) {
            percent[j] += 0.1f;
            moved = true;
        }
        if (sum >= 100.0f && mayMove && percent[j] > 0.0f) {
            percent[j] -= 0.1f;
            moved = true;
        }
        j = (j + 1) % 3;
        if (std::lround(static_cast<double>(sum) * 10.0) == 1000) return;
        idleSteps = moved ? 0 : idleSteps + 1;
        if (idleSteps > 3) return;
    }
}
