#include "Engine/Log/Require.h"
#include "Fuzz/FuzzInput.h"
#include "GullCore/Json.h"

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {
    R"({"stars":{"1":3,"2":1},"bestHaul":{"1":220,"2":250}})",
    R"({"stars":{"+01":3.0,"-7":9007199254740993},"bestHaul":{},"more":[[[{"a":null}]]]})"};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const auto progress = Json::readProgress(input.rest());
    if (!progress) return 0;
    require(Json::readProgress(Json::write(*progress)) == progress, "what was written is not read again");
    CampaignProgress merged;
    merged.merge(*progress);
    require(merged == *progress, "merging into nothing changed something");
    merged.record(1, 3, 100);
    require(merged.isUnlocked(2) && merged.highestUnlocked() >= 2, "a star opens the next beach");
    (void)merged.totalStars();
    return 0;
}
