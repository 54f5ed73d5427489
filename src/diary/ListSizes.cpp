#include "diary/ListSizes.h"

#include <algorithm>
#include <cmath>

namespace {
constexpr int kWholePerMille = 1000;
}

int EntryListHeight(int perMille, int viewHeight) {
    return static_cast<int>(std::lround(perMille * viewHeight * 0.001 + 0.5));
}

int PerMilleOf(int entryListHeight, int viewHeight) {
    if (viewHeight <= 0) {
        return 0;
    }
    const int perMille = (entryListHeight * kWholePerMille + viewHeight / 2) / viewHeight;
    return std::clamp(perMille, 0, kWholePerMille);
}
