#include "kortavin/grid/sharedfont.h"

#include <cstring>
#include <string_view>
#include <unordered_set>

namespace kortavin::grid {
namespace {

// The record has no padding, so its bytes are its value.
struct HashBytes {
    std::size_t operator()(const LOGFONT& font) const {
        return std::hash<std::string_view>()({reinterpret_cast<const char*>(&font), sizeof font});
    }
};

}  // namespace

const LOGFONT* SharedFont(const LOGFONT& font) {
    static auto* fonts = new std::unordered_set<LOGFONT, HashBytes>;
    return &*fonts->insert(font).first;
}

}  // namespace kortavin::grid
