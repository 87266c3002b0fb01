#include "Gullwick/App/PlayersLanguage.h"

#include "Engine/Log/Log.h"
#include "Engine/Raster/Text.h"

#include <cstdlib>

namespace gull {

Language playersLanguage(const std::string& chosen) {
    Language language = Language::preferred(std::getenv);
    if (!chosen.empty()) {
        if (const auto found = Language::find(chosen)) {
            language = *found;
        } else {
            Log::say("settings: there are no texts in the language \"{}\"; using the system's language",
                     chosen);
        }
    }
    if (language == Language() || canShow(language.ownName())) return language;
    Log::say(
        "no font here has the letters of the language \"{}\", so texts are English. On Debian: apt-get "
        "install {}",
        language.code(), "fonts-noto-cjk");
    return {};
}

}  // namespace gull
