#include "Gullwick/Scene/SceneCamera.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

namespace gull {

namespace {

constexpr glm::dvec3 restingPlace(0, 8.4, 13.4);
constexpr glm::dvec3 lookPoint(0, -0.2, -1.6);
constexpr double fieldOfView = 40;
constexpr double wideAspect = 1.55;  // wider views show the same, narrower ones from farther back
constexpr double leastAspect = 0.3;
constexpr double introDuration = 1.4;
constexpr double farthest = 10000;  // from the origin along any axis: there is nothing to see beyond

/// The whole of `text` as a number; empty if it is not a number.
std::optional<double> number(const std::string& text) {
    if (text.empty()) return std::nullopt;
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    const bool whole = *end == '\0' && std::isspace(static_cast<unsigned char>(text.front())) == 0;
    return whole && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

}  // namespace

std::optional<glm::dvec3> SceneCamera::parseTriple(const char* text) {
    if (!text) return std::nullopt;
    std::vector<double> numbers;
    const std::string all(text);
    for (std::size_t start = 0; start <= all.size();) {
        const std::size_t comma = std::min(all.find(',', start), all.size());
        if (const auto value = number(all.substr(start, comma - start))) numbers.push_back(*value);
        start = comma + 1;
    }
    if (numbers.size() != 3) return std::nullopt;
    for (const double each : numbers)
        if (std::abs(each) > farthest) return std::nullopt;
    return glm::dvec3(numbers[0], numbers[1], numbers[2]);
}

std::optional<double> SceneCamera::parseAngle(const char* text) {
    const auto angle = text ? number(text) : std::nullopt;
    return angle && *angle > 0 && *angle < 180 ? angle : std::nullopt;
}

SceneCamera::SceneCamera(Stage& stage)
    : stage_(stage), node_(stage.root.addChild("camera")), camera_(std::make_shared<Camera>()) {
    camera_->fieldOfView = parseAngle(std::getenv("GW_FOV")).value_or(fieldOfView);
    camera_->zNear = 0.5;
    camera_->zFar = 260;
    camera_->bloomIntensity = 0.45;
    camera_->bloomThreshold = 0.9;
    camera_->bloomBlurRadius = 10;
    camera_->vignettingIntensity = 0.4;
    camera_->vignettingPower = 1.1;
    camera_->contrast = 0.08;
    camera_->saturation = 1.06;
    node_.camera = camera_;
    stage.pointOfView = &node_;
    readEnvironment();
    offset_ = fullView_;
    place(0, -100, 0);
}

void SceneCamera::readEnvironment() {
    look_ = parseTriple(std::getenv("GW_LOOK")).value_or(lookPoint);
    fullView_ = parseTriple(std::getenv("GW_CAM")).value_or(restingPlace) - look_;
}

void SceneCamera::frame(double aspect) {
    readEnvironment();
    const double back = std::max(1.0, std::pow(wideAspect / std::max(aspect, leastAspect), 0.95));
    offset_ = fullView_ * back;
}

void SceneCamera::place(double time, double introStart, double shake) {
    const glm::dvec3 rest = look_ + offset_;
    glm::dvec3 position = rest;
    const double i = (time - introStart) / introDuration;
    if (i < 1) {
        // From farther out and higher, settling gently.
        const glm::dvec3 start = look_ + offset_ * 1.45 + glm::dvec3(0, 3, 0);
        const double left = 1 - std::max(i, 0.0);
        position = start + (rest - start) * (1 - left * left * left);
    }
    const double swing = std::sin(60 * time) * shake;
    position += glm::dvec3(0.04, 0.06, 0.06) * swing;

    node_.position = rest;
    node_.lookAt(look_);
    stage_.restingView.reset();
    if (position != rest) {
        stage_.restingView = node_.worldTransform();
        node_.position = position;
        node_.lookAt(look_);
    }
}

}  // namespace gull
