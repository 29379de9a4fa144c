// A host whose own global classes have names like the library's. Each would tell on being mistaken for it.
#define KORTAVIN_NO_GLOBAL_NAMES
#include <kortavin/base/geometry.h>
#include <kortavin/service/querysql.h>

#include <cstdio>
#include <cstdlib>

class CString {
  public:
    CString() { std::abort(); }
    ~CString() { std::abort(); }
};

class CRect {
  public:
    CRect(int, int, int, int) { std::abort(); }
};

class CRecordset {
  public:
    CRecordset() { std::abort(); }
    virtual ~CRecordset();
    virtual int Open(unsigned, const char*, unsigned);
};
CRecordset::~CRecordset() {
    std::abort();
}
int CRecordset::Open(unsigned, const char*, unsigned) {
    std::abort();
}

int main() {
    kortavin::CGeoDatabase database;
    database.Open("Driver=SQLite3;Database=:memory:");
    database.ExecuteSQL("CREATE TABLE Roads (Name varchar(20), Width integer)");
    kortavin::CStringArray tables;
    const bool isListed = database.GetAllTables(tables) && tables.GetSize() == 1 && tables[0] == "Roads";
    const kortavin::CRect rect(1, 2, 3, 4);
    kortavin::CODBCFieldInfo info;
    const auto name = kortavin::CQuerySql(&database).GetFieldTypeStr(info);
    return isListed && rect.Width() == 2 && name == "<unknown type>    " ? 0 : 1;
}
