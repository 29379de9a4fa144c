#include "cli/utf8file.h"

#include "cli/failure.h"

using namespace kortavin;

TEST(Utf8File, TakesCharactersInPiecesAndRefusesALineThatIsNoText) {
    CMemFile target;
    cli::Utf8File file(target);
    for (const char byte : std::string_view("\xCE\xE4\xBA\xBA,\x94\x39\xFC\x36\r\n\x80\r\nend \xB4\xF3"))
        file.Write(&byte, 1);
    file.Finish();
    EXPECT_EQ(target.GetContent(), "武汉,😀\r\n€\r\nend 大");
    EXPECT_THAT([&] { file.Write("\xB4,\n", 3); },
                testing::ThrowsMessage<cli::Failure>(testing::HasSubstr("line 4")));
    // A lead byte at the very end has nothing to become a character with.
    cli::Utf8File cut(target);
    cut.Write("\xB4", 1);
    EXPECT_THROW(cut.Finish(), cli::Failure);
}
