#include "Engine/Log/Require.h"
#include "Fuzz/FuzzInput.h"
#include "GullCore/Json.h"

using namespace gull;

const std::initializer_list<const char*> gull::fuzzSeeds = {
    R"({"id":3,"kind":"ring","at":{"x":0.41,"y":0.62},"depth":0.12})", R"({"x":1e-7,"y":-0.0})"};

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    const std::string text = input.rest();
    if (const auto item = Json::readBuriedItem(text))
        require(Json::readBuriedItem(Json::write(*item)) == item, "an item is not read again");
    if (const auto point = Json::readPlotPoint(text))
        require(Json::readPlotPoint(Json::write(*point)) == point, "a point is not read again");
    return 0;
}
