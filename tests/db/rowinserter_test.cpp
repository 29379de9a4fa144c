#include "kortavin/db/rowinserter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <iterator>

#include "tests/support/databases.h"

using namespace kortavin::test;
using ::testing::ElementsAre;

namespace {

class RowInserter : public EveryDatabaseTest {};

TEST_P(RowInserter, TextsBecomeValuesOfEveryType) {
    const std::string longText(70000, 'x');
    const std::string table =
        MakeTable("i integer NOT NULL, d double precision, t date, s varchar(40), l " + LongTextType());
    CStringArray columns;
    for (const char* name : {"i", "d", "t", "s", "l"})
        columns.Add(name);
    CRowInserter inserter(m_database, table.c_str(), columns);
    const auto insert = [&](const Row& row) {
        std::vector<CString> values;
        std::ranges::transform(row, std::back_inserter(values),
                               [](auto& value) { return CString(Gbk(value)); });
        inserter.Insert(values);
    };
    insert({"-42", "2.5005e3", "2024-03-01", "o'中国\"?", "short"});
    insert({"1", "", "", "", longText});
    EXPECT_NE(ErrorOf([&] { insert({"", "1", "", "", ""}); }).GetErrorMessage(), "");
    insert({"2", "-0.125", "1999-12-31", "𠀀", ""});
    EXPECT_THAT(Query("SELECT i, d, t, s, l FROM " + table + " WHERE d IS NOT NULL ORDER BY i"),
                ElementsAre(ElementsAre("-42", "2500.5", "2024-03-01", Gbk("o'中国\"?"), "short"),
                            ElementsAre("2", "-0.125", "1999-12-31", Gbk("𠀀"), "")));
    EXPECT_EQ(Query("SELECT l FROM " + table + " WHERE t IS NULL AND s IS NULL")[0][0], longText);
}

INSTANTIATE_TEST_SUITE_P(Databases, RowInserter, kEveryBackend, BackendName);

}  // namespace
