#include "cli/NearWord.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
/// Number of letters to insert, delete, replace or swap with their neighbour to get from one word
/// to the other (optimal string alignment).
int Distance(const QString& from, const QString& to) {
    std::vector<std::vector<int>> steps(from.size() + 1, std::vector<int>(to.size() + 1));
    for (qsizetype i = 0; i <= from.size(); ++i) {
        for (qsizetype k = 0; k <= to.size(); ++k) {
            if (i == 0 || k == 0) {
                steps[i][k] = static_cast<int>(i + k);
                continue;
            }
            const int replaced = steps[i - 1][k - 1] + (from[i - 1] == to[k - 1] ? 0 : 1);
            steps[i][k] = std::min({replaced, steps[i - 1][k] + 1, steps[i][k - 1] + 1});
            if (i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1]) {
                steps[i][k] = std::min(steps[i][k], steps[i - 2][k - 2] + 1);
            }
        }
    }
    return steps.back().back();
}
}  // namespace

QString DidYouMean(const QString& word, const QStringList& candidates) {
    // At most two errors, or one in three letters, and always fewer than the word has letters.
    const auto length = static_cast<int>(word.size());
    int least = std::min(std::max(2, length / 3) + 1, length);
    QString nearest;
    for (const QString& candidate : candidates) {
        const int distance = Distance(word.toLower(), candidate);
        if (distance < least) {
            least = distance;
            nearest = candidate;
        }
    }
    return nearest.isEmpty() ? QString() : u"; did you mean '%1'?"_s.arg(nearest);
}
