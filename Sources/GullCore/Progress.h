#pragma once

#include <cstdint>
#include <filesystem>
#include <map>

namespace gull {

/// What the game remembers between runs: the best stars and the best haul of each beach, by beach number.
/// They determine which beaches are open. A default-constructed value is fresh: nothing has been played.
///
/// Numbers are 64-bit so that a file edited by hand comes back as it was written.
struct CampaignProgress {
    using ByBeach = std::map<std::int64_t, std::int64_t>;
    ByBeach stars;     ///< 1 to 3; no entry for a beach never passed
    ByBeach bestHaul;  ///< of passing results

    /// A beach opens when the one before it has a star, and stays open. Beach 1 and below always are.
    bool isUnlocked(std::int64_t beach) const;
    /// The last open beach of the campaign, 1 to 8, even if there are gaps before it.
    int highestUnlocked() const;
    /// Sum of all stars; stops at the ends of the 64-bit range.
    std::int64_t totalStars() const;

    /// Adds the result of one hunt. A worse result never lowers anything; a failed one (no star) is ignored.
    /// True when the haul is a new best of this beach, which a first pass always is; more stars alone do not
    /// count.
    bool record(std::int64_t beach, std::int64_t newStars, std::int64_t haul);

    /// Takes over whatever is better in `other`, beach by beach, stars and hauls separately.
    void merge(const CampaignProgress& other);

    /// The progress kept in `file`; fresh when it is missing, unreadable or damaged (it is left as it is).
    static CampaignProgress load(const std::filesystem::path& file);
    /// Replaces `file` in one step and creates its folder if needed. A damaged file is set aside first, as
    /// `<file>.damaged`; one that cannot be read or set aside stays as it is. Failures are silent: the
    /// progress in memory is still right. A running game keeps its progress in a ProgressFile instead.
    void save(const std::filesystem::path& file) const;

    bool operator==(const CampaignProgress&) const = default;
};

}  // namespace gull
