#include "kortavin/db/geodatabase.h"

#include <array>

#include "kortavin/base/codepage.h"
#include "kortavin/base/texts.h"
#include "kortavin/db/catalogrecordsets.h"
#include "kortavin/odbc/handles.h"
#include "kortavin/window/messagebox.h"

namespace kortavin {

using base::Text;
using base::TextId;

static_assert(sizeof(CGeoDatabase) == sizeof(CDatabase), "its object is exactly a CDatabase");

namespace {

CString Report(const CDBException& error, const char* withoutMemory) {
    try {
        return error.m_strError + error.m_strStateNativeOrigin;
    } catch (const std::bad_alloc&) {
        return withoutMemory;
    }
}

void Show(const CString& report) {
    try {
        if (!report.IsEmpty())
            AfxMessageBox(report);
    } catch (const std::bad_alloc&) {  // there is no memory even for a box
    }
}

CString Bracketed(const CString& name) {
    return "[" + name + "]";
}

CString QuotedForJet(const CString& name) {
    const int dot = name.Find('.');
    return dot < 0 ? name : Bracketed(name.Left(dot)) + "." + Bracketed(name.Mid(dot + 1));
}

CString Quoted(const CString& name) {
    return name.Find(' ') < 0 ? name : Bracketed(name);
}

}  // namespace

CGeoDatabase::CGeoDatabase() = default;

CGeoDatabase::~CGeoDatabase() = default;

BOOL CGeoDatabase::GetAllTables(CStringArray& tables) {
    BOOL result = FALSE;
    CString report;
    tables.RemoveAll();
    try {
        WithMemoryErrors([&] {
            _CTables catalog(this);
            result = catalog.Open(nullptr, nullptr, nullptr, "'TABLE,VIEW'", CRecordset::forwardOnly);
            for (; !catalog.IsEOF(); catalog.MoveNext())
                tables.Add(catalog.m_strName);
        });
    } catch (const CDBException& error) {
        report = Report(error, Text(TextId::MemoryError));
    } catch (const CMemoryException&) {
        report = Text(TextId::MemoryError);
    }
    Show(report);
    return result;
}

BOOL CGeoDatabase::GetColumnList(const CString& table, CStringArray& columns) {
    BOOL result = TRUE;
    CString report;
    try {
        WithMemoryErrors([&] {
            CColumns catalog(this);
            result =
                catalog.Open(nullptr, nullptr, table, nullptr, CRecordset::forwardOnly) && !catalog.IsBOF();
            for (; !catalog.IsEOF(); catalog.MoveNext()) {
                const CString& name = catalog.m_strColumnName;
                columns.Add(IsODBCJetDriver() ? QuotedForJet(name) : Quoted(name));
            }
        });
    } catch (const CDBException& error) {
        report = Report(error, "Out-of-memory");
    } catch (const CMemoryException&) {
        report = "Out-of-memory";
    }
    Show(report);
    return result;
}

BOOL CGeoDatabase::IsODBCJetDriver() {
    std::array<char, 200> name{};
    SQLSMALLINT length = 0;
    const SQLRETURN code = SQLGetInfo(m_hdbc, SQL_DRIVER_NAME, name.data(), name.size(), &length);
    if (!odbc::Succeeded(code))
        return FALSE;
    name.back() = '\0';
    return base::CompareNoCase(name.data(), "ODBCJT32.DLL") == 0;
}

}  // namespace kortavin
