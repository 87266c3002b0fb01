#include "Gullwick/HUD/Palette.h"

namespace gull::Type {

Font mono(double size, FontWeight weight) {
    return {.size = size, .weight = weight, .design = FontDesign::monospaced};
}

Font digits(double size, FontWeight weight) {
    return {.size = size, .weight = weight, .design = FontDesign::monospaced, .tabularDigits = true};
}

Font italic(double size) {
    return {.size = size, .design = FontDesign::serif, .italic = true};
}

Font sans(double size, FontWeight weight) {
    return {.size = size, .weight = weight, .design = FontDesign::proportional};
}

}  // namespace gull::Type
