#include "cli/utf8file.h"

#include "cli/failure.h"

namespace kortavin::test {
namespace {

void Write(CFile& file, std::string_view bytes) {
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
}

TEST(Utf8File, CharactersMayComeInPieces) {
    CMemFile target;
    cli::Utf8File file(target);
    for (const char byte : std::string_view("\xCE\xE4\xBA\xBA,\x94\x39\xFC\x36\r\n\x80\r\nend \xB4\xF3"))
        Write(file, std::string_view(&byte, 1));
    EXPECT_EQ(target.GetContent(), "武汉,😀\r\n€\r\n");
    file.Finish();
    EXPECT_EQ(target.GetContent(), "武汉,😀\r\n€\r\nend 大");
    EXPECT_EQ(file.GetBytesWritten(), target.GetContent().size());
}

TEST(Utf8File, ALineThatIsNoTextIsRefusedByItsNumber) {
    CMemFile target;
    cli::Utf8File file(target);
    try {
        Write(file, "one\ntwo\n\xB4,\nfour\n");
        FAIL();
    } catch (const cli::Failure& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("line 3"));
    }
    EXPECT_EQ(target.GetContent(), "one\ntwo\n");
    // A lead byte at the very end has nothing to become a character with.
    cli::Utf8File cut(target);
    Write(cut, "\xB4");
    EXPECT_THROW(cut.Finish(), cli::Failure);
}

}  // namespace
}  // namespace kortavin::test
