#include "tests/support/databases.h"

using namespace kortavin::test;

namespace {

// Text of which every part differs, so that a piece that is lost, doubled or exchanged shows.
std::string Ascii(std::size_t bytes) {
    std::string text;
    for (int i = 0; text.size() < bytes; ++i)
        text += std::to_string(i) + ";";
    return text.substr(0, bytes);
}

// The same with characters of three bytes and some of four, so that characters lie across every border.
std::string Chinese(std::size_t utf8Bytes) {
    std::string text(utf8Bytes % 3, 'x');
    for (int i = 0; text.size() < utf8Bytes; ++i) {
        const bool four = i % 10 == 0 && utf8Bytes - text.size() >= 12;
        text += four ? "😀" + std::to_string(i / 10 % 90 + 10) : i % 2 == 0 ? "道" : "路";
    }
    return text;
}

class Values : public EveryDatabaseTest {};
INSTANTIATE_TEST_SUITE_P(On, Values, kEveryBackend, BackendName);

}  // namespace

// The borders are those of bound buffers, which double, and of the joined pieces of longer values. Each row
// is longer than the one before in its first column, and shorter in its second.
TEST_P(Values, OfEverySizeAroundTheBuffersComeWholeInWhateverOrderTheyAreRead) {
    std::vector<std::string> values = {""};
    for (const std::size_t border : {40, 256, 512, 1024, 4096, 8192, 16384, 20480, 86016})
        for (std::size_t size = border - 3; size <= border + 1; ++size) {
            values.push_back(Ascii(size));
            values.push_back(Chinese(size));
        }
    values.push_back(Chinese(3'000'000));
    const std::size_t last = values.size() - 1;

    const std::string table = MakeTable("id integer, a " + LongTextType() + ", b " + LongTextType());
    m_database.BeginTrans();
    for (std::size_t i = 0; i <= last; ++i)
        Execute("INSERT INTO " + table + " VALUES (" + std::to_string(i) + ", '" + values[i] + "', '" +
                values[last - i] + "')");
    m_database.CommitTrans();
    _CRecordsetEx recordset(&m_database);
    recordset.OpenSql(CString(Gbk("SELECT a, b FROM " + table + " ORDER BY id")));
    const auto expectValue = [&](short column, const std::string& expected) {
        CString value;
        recordset.ReadFieldText(column, value);
        // Compared without printing megabytes.
        EXPECT_TRUE(value.View() == Gbk(expected)) << expected.size() << " bytes in column " << column;
    };
    for (std::size_t i = 0; i <= last; ++i, recordset.MoveNext()) {
        if (i % 3 == 0)
            expectValue(0, values[i]);
        expectValue(1, values[last - i]);
        if (i % 3 == 1)  // backwards; every third row's first value stays unread
            expectValue(0, values[i]);
    }
    EXPECT_TRUE(recordset.IsEOF());
}
