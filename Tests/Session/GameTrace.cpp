#include "Session/GameTrace.h"

#include <cmath>
#include <cstdio>
#include <sstream>

namespace gull::session {

std::vector<std::string> GameTrace::lines() const {
    const std::string text = contents(file_);
    std::istringstream whole(text.substr(0, text.rfind('\n') + 1));  // the last line may still be written
    std::vector<std::string> result;
    for (std::string line; std::getline(whole, line);) result.push_back(line);
    return result;
}

std::string GameTrace::valueIn(const std::string& line, const std::string& key) {
    const std::size_t at = line.find(" " + key + "=");
    if (at == std::string::npos) return {};
    const std::size_t start = at + key.size() + 2;
    return line.substr(start, key == "toast" ? std::string::npos : line.find(' ', start) - start);
}

std::string GameTrace::value(const std::string& key) const {
    const auto all = lines();
    for (auto line = all.rbegin(); line != all.rend(); ++line)
        if (line->find("phase=") != std::string::npos) return valueIn(*line, key);
    return {};
}

std::vector<double> GameTrace::frames() const {
    std::vector<double> result;
    for (const std::string& line : lines())
        if (line.ends_with(" frame")) result.push_back(std::atof(line.c_str()));
    return result;
}

std::vector<double> GameTrace::changes(const std::string& key) const {
    std::vector<double> result;
    std::string last;
    for (const std::string& line : lines()) {
        const std::string now = valueIn(line, key);
        if (now.empty() || now == last) continue;
        if (!last.empty()) result.push_back(std::atof(line.c_str()));
        last = now;
    }
    return result;
}

bool GameTrace::waitForCoil(double x, double y) const {
    return eventually([&] {
        double coilX = -1, coilY = -1;
        std::sscanf(value("coil").c_str(), "%lf,%lf", &coilX, &coilY);
        return std::hypot(coilX - x, coilY - y) < 0.01;
    });
}

}  // namespace gull::session
