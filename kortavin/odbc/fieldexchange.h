#pragma once

#include <deque>
#include <string>

#include "kortavin/base/cstring.h"
#include "kortavin/odbc/odbctypes.h"

namespace kortavin {

class CDatabase;

// Carries the fields of a recordset's DoFieldExchange between their columns and their members. The recordset
// owns it: one pass binds the columns, in the order of the calls and from column 1 on; each later pass loads
// the current row.
class KORTAVIN_API CFieldExchange {
  public:
    enum FieldType { noFieldType, outputColumn };

    CFieldExchange(CDatabase& database, HSTMT statement) : m_database(database), m_statement(statement) {}

    // What the fields that follow in this pass are. Fields of no type are not exchanged.
    void SetFieldType(FieldType type) { m_type = type; }

    // Start a pass; and make every field NULL that the next fetch gives no length. The recordset's to call.
    void BeginBinding();
    void BeginLoading();
    void ForgetLengths();

  private:
    friend KORTAVIN_API void RFX_Text(CFieldExchange*, const char*, CString&, int, SWORD, short);
    friend KORTAVIN_API void RFX_Int(CFieldExchange*, const char*, int&);
    friend KORTAVIN_API void RFX_Long(CFieldExchange*, const char*, LONG&);

    struct Field {
        std::string text;
        LONG number = 0;
        std::ptrdiff_t length = 0;  // as the driver reports it
    };

    Field* NextField();
    void Bind(Field& field, SWORD type, void* buffer, std::ptrdiff_t size);
    void ExchangeNumber(LONG& value);

    CDatabase& m_database;
    HSTMT m_statement;
    FieldType m_type = noFieldType;
    bool m_binding = false;
    std::size_t m_next = 0;
    std::deque<Field> m_fields;  // never moved: the driver writes into them
};

// One field each: the label for messages and the member. A text is cut at `maxLength` bytes, never inside a
// character; NULL is an empty text or 0. RFX_Text throws CDBException where a text cannot be converted.
KORTAVIN_API void RFX_Text(CFieldExchange* exchange, const char* label, CString& value, int maxLength = 255,
                           SWORD columnType = odbc::kVarChar, short scale = 0);
KORTAVIN_API void RFX_Int(CFieldExchange* exchange, const char* label, int& value);
KORTAVIN_API void RFX_Long(CFieldExchange* exchange, const char* label, LONG& value);

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CFieldExchange;
using kortavin::RFX_Int;
using kortavin::RFX_Long;
using kortavin::RFX_Text;
#endif
