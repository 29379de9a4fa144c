#include "kortavin/window/fontcache.h"

#include <functional>
#include <string_view>
#include <unordered_map>

namespace kortavin::window {
namespace {

struct BytesHash {
    // A description has no bytes between its fields.
    std::size_t operator()(const LOGFONT& description) const {
        return std::hash<std::string_view>()(
            {reinterpret_cast<const char*>(&description), sizeof description});
    }
};

struct Cache {
    std::unordered_map<LOGFONT, std::weak_ptr<const NativeFont>, BytesHash> fonts;
    std::size_t cleanAt = 0;  // the size at which entries of fonts that are gone are looked for
};

// Never destroyed: a host's static objects may still ask for fonts while the program ends.
Cache& TheCache() {
    static auto* cache = new Cache;
    return *cache;
}

// Looking at every entry each time the table has doubled costs little for each font that is made.
void Clean(Cache& cache) {
    if (cache.fonts.size() < cache.cleanAt)
        return;
    std::erase_if(cache.fonts, [](const auto& entry) { return entry.second.expired(); });
    cache.cleanAt = 2 * cache.fonts.size() + 16;
}

}  // namespace

std::shared_ptr<const NativeFont> SharedFont(const LOGFONT& description) {
    Toolkit& toolkit = RequireToolkit();
    Cache& cache = TheCache();
    if (const auto found = cache.fonts.find(description); found != cache.fonts.end()) {
        if (auto font = found->second.lock())
            return font;
    }
    auto font = toolkit.MakeFont(description);
    Clean(cache);
    cache.fonts[description] = font;
    return font;
}

void ForgetFonts() {
    TheCache() = Cache();
}

}  // namespace kortavin::window
