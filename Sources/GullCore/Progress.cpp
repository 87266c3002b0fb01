#include "GullCore/Progress.h"

#include "GullCore/Levels.h"

#include <algorithm>
#include <limits>

namespace gull {
namespace {

std::int64_t saturatingSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (!__builtin_add_overflow(a, b, &sum)) return sum;
    return b < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
}

}  // namespace

bool CampaignProgress::isUnlocked(std::int64_t beach) const {
    if (beach < 2) return true;
    const auto before = stars.find(beach - 1);
    return before != stars.end() && before->second > 0;
}

int CampaignProgress::highestUnlocked() const {
    for (auto n = static_cast<int>(Campaign::beaches().size()); n > 1; --n) {
        if (isUnlocked(n)) return n;
    }
    return 1;
}

std::int64_t CampaignProgress::totalStars() const {
    std::int64_t total = 0;
    for (const auto& [beach, count] : stars) total = saturatingSum(total, count);
    return total;
}

bool CampaignProgress::record(std::int64_t beach, std::int64_t newStars, std::int64_t haul) {
    if (newStars < 1) return false;
    std::int64_t& kept = stars[beach];
    kept = std::max(kept, newStars);

    const auto best = bestHaul.find(beach);
    if (best == bestHaul.end() ? haul < 0 : haul <= best->second) return false;
    bestHaul[beach] = haul;
    return true;
}

void CampaignProgress::merge(const CampaignProgress& other) {
    const auto keepBest = [](ByBeach& mine, const ByBeach& theirs) {
        for (const auto& [beach, value] : theirs) {
            const auto [kept, isNew] = mine.emplace(beach, value);
            if (!isNew) kept->second = std::max(kept->second, value);
        }
    };
    keepBest(stars, other.stars);
    keepBest(bestHaul, other.bestHaul);
}

}  // namespace gull
