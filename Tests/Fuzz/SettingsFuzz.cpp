#include "Engine/Log/Require.h"
#include "Fuzz/FuzzInput.h"
#include "Gullwick/Settings/AppSettings.h"
#include "TemporaryFolder.h"

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {
    R"({"haptics": true, "sound": 0, "trackpadSweep": "no", "volume": 80.5, "language": "de", "x": [{}, 1e9]})",
    "{\"showTicks\": \"\\u00e9\", \"deep\": [[[[[[[[[[[[]]]]]]]]]]]]}"};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    static const TemporaryFolder folder;
    const auto file = folder / "settings.json";
    writeText(file, input.rest());
    std::filesystem::remove(folder / "settings.json.damaged");
    bool ticks = false;
    {
        AppSettings settings(file);
        ticks = settings.showTicks();
        settings.sound = !settings.sound();
        SettingsFile(file).write("volume", std::int64_t{80});
    }
    AppSettings again(file);
    require(again.showTicks() == ticks || std::filesystem::exists(folder / "settings.json.damaged"),
            "one setting's change changed another");
    require(SettingsFile(file).read("volume", 0, 0, 100) == 80, "a setting is not read again");
    return 0;
}
