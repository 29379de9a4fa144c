#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "kortavin/base/file.h"
#include "kortavin/db/geodatabase.h"
#include "kortavin/db/recordsetex.h"
#include "kortavin/service/querysql.h"
#include "kortavin/window/messagebox.h"
#include "scriptedsource.h"

namespace kortavin::testing {

using namespace ::testing;
using Strings = std::vector<std::string>;

inline std::string Gbk(const std::string& utf8) {
    return std::string(CString::FromUtf8(utf8).value().View());
}

inline std::string Times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

// "22012 division by zero": an error's state, if it has one, and messages; empty when the action throws none.
std::string FailureOf(auto action) {
    try {
        action();
    } catch (const CDBException& error) {
        return std::string((error.GetState() + " " + error.GetErrorMessage()).View());
    } catch (const CNotSupportedException& error) {
        return std::string(error.GetErrorMessage().View());
    }
    return {};
}

// A connection to a scripted source. After each test no statement and no connection may be left.
class FaultTest : public Test {
  protected:
    FaultTest() {
        window::SetMessageBoxHandler([this](const char* text, UINT) {
            m_boxes.emplace_back(text);
            return IDOK;
        });
    }
    ~FaultTest() override { window::SetMessageBoxHandler({}); }
    void TearDown() override {
        EXPECT_EQ(m_source.log.openStatements, 0);
        m_database.Close();
        EXPECT_EQ(m_source.log.openConnections, 0);
    }

    // Opens the source as it is scripted by now.
    void Open(const std::string& charset = "UTF-8") {
        ASSERT_TRUE(m_database.SetNarrowCharset(charset));
        m_database.Open(CString(m_source.ConnectionString()));
    }
    // Gives the catalog a table and a column of this name.
    void AddName(const Value& name) {
        m_source.tables.AddRow({Value::Null(), Value::Null(), name});
        m_source.columns.AddRow({Value::Null(), Value::Null(), "t", name});
    }
    // "TRUE|a|b": the answer and the list, which held "before".
    std::string AllTables() {
        return Told([this](CStringArray& tables) { return m_database.GetAllTables(tables); });
    }
    std::string ColumnList(const std::string& table = "t") {
        return Told([&](CStringArray& columns) { return m_database.GetColumnList(CString(table), columns); });
    }
    static std::string Told(auto list) {
        CStringArray names;
        names.Add("before");
        std::string told = list(names) ? "TRUE" : "FALSE";
        for (const CString& name : names)
            told.append("|").append(name.View());
        return told;
    }

    ScriptedSource m_source;
    CGeoDatabase m_database;
    CQuerySql m_query{&m_database};
    Strings m_boxes;  // the texts of the message boxes shown
};

}  // namespace kortavin::testing
