#pragma once

#include <gmock/gmock.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "db/geodatabase.h"
#include "db/recordsetex.h"
#include "framework/window/messagebox.h"
#include "service/querysql.h"
#include "tests/support/scripted/scriptedsource.h"

namespace kortavin::testing {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

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

// The database error that an action throws; nothing when it throws none.
template <class Action>
std::optional<CDBException> ErrorOf(Action action) {
    try {
        action();
    } catch (const CDBException& error) {
        return error;
    }
    return std::nullopt;
}

// "22012 division by zero": an error's state and first line; empty when the action throws none.
template <class Action>
std::string FailureOf(Action action) {
    const auto error = ErrorOf(action);
    if (!error)
        return {};
    const std::string message(error->m_strError.View());
    return std::string(error->GetState().View()) + ' ' + message.substr(0, message.find('\n'));
}

inline Strings ToStrings(const CStringArray& texts) {
    Strings strings;
    for (const CString& text : texts)
        strings.emplace_back(text.View());
    return strings;
}

// A connection to a scripted source. After each test no statement and no connection may be left.
class FaultTest : public ::testing::Test {
  protected:
    FaultTest() {
        m_former = window::SetMessageBoxHandler([this](const char* text, UINT type) {
            EXPECT_EQ(type, MB_OK);
            m_boxes.emplace_back(text);
            return IDOK;
        });
    }
    ~FaultTest() override { window::SetMessageBoxHandler(m_former); }
    void TearDown() override {
        EXPECT_EQ(m_source.OpenStatements(), 0);
        m_database.Close();
        EXPECT_EQ(m_source.OpenConnections(), 0);
    }

    // Opens the source as it is scripted by now.
    void Open(const std::string& charset = "UTF-8") {
        ASSERT_TRUE(m_database.SetNarrowCharset(charset));
        m_database.Open(CString(m_source.ConnectionString()));
    }

    ScriptedSource m_source;
    CGeoDatabase m_database;
    Strings m_boxes;  // the texts of the message boxes shown

  private:
    window::MessageBoxHandler m_former;
};

}  // namespace kortavin::testing
