#pragma once

#include <vector>

namespace gull {

/// The waterline for one level of the water, as a swash draws it: a smooth curve along the beach that follows
/// the sand's larger shapes and rounds the rest.
class Shoreline {
  public:
    static constexpr double reach = 32;     ///< it bends this far to either side and is straight beyond
    static constexpr double spacing = 0.5;  ///< of its samples, world units
    static constexpr double landward = 12;  ///< up to this z the water may climb

    /// `level`: height of the water's surface.
    explicit Shoreline(double level);

    /// Where the water ends at `x`.
    double z(double x) const;

  private:
    std::vector<double> places_;  ///< from -reach to reach
};

}  // namespace gull
