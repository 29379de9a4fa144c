#include "resources/texts.h"

#include <array>
#include <cstddef>

namespace kortavin::resources {
namespace {

struct NamedText {
    TextId id;
    const char8_t* utf8;
};

constexpr NamedText kTexts[] = {
    {TextId::Ascending, u8"升序"},
    {TextId::WrongFileFormat, u8"文件格式不正确"},
    {TextId::MemoryError, u8"内存错误"},
};

consteval bool StandInOrder() {
    for (std::size_t i = 0; i < std::size(kTexts); ++i)
        if (static_cast<std::size_t>(kTexts[i].id) != i)
            return false;
    return true;
}
static_assert(std::size(kTexts) == static_cast<std::size_t>(TextId::Count), "every text has its row");
static_assert(StandInOrder(), "the table's rows follow the order of TextId");

std::array<CString, std::size(kTexts)> ToGbk() {
    std::array<CString, std::size(kTexts)> texts;
    for (std::size_t i = 0; i < texts.size(); ++i)
        texts[i] = CString::FromUtf8(reinterpret_cast<const char*>(kTexts[i].utf8)).value();
    return texts;
}

}  // namespace

const CString& Text(TextId id) {
    static const std::array<CString, std::size(kTexts)> texts = ToGbk();
    return texts[static_cast<std::size_t>(id)];
}

}  // namespace kortavin::resources
