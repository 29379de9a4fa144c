#include "kortavin/base/texts.h"

#include <cstddef>
#include <iterator>

namespace kortavin::base {
namespace {

struct NamedText {
    TextId id;
    const char* gbk;
};

constexpr NamedText kTexts[] = {
#include <kortavin/base/texts.inc>
};

consteval bool StandInOrder() {
    for (std::size_t i = 0; i < std::size(kTexts); ++i)
        if (static_cast<std::size_t>(kTexts[i].id) != i)
            return false;
    return true;
}
static_assert(std::size(kTexts) == static_cast<std::size_t>(TextId::Count), "every text has its row");
static_assert(StandInOrder(), "the table's rows follow the order of TextId");

}  // namespace

const char* Text(TextId id) {
    return kTexts[static_cast<std::size_t>(id)].gbk;
}

}  // namespace kortavin::base
