#pragma once

#include "kortavin/base/exception.h"
#include "kortavin/odbc/odbctypes.h"

namespace kortavin {

// An error of the data source, its driver or the driver manager, or one of this layer's own below.
class KORTAVIN_API CDBException : public CException {
  public:
    // Return codes that this layer adds to ODBC's.
    static constexpr RETCODE kFieldIndexOutOfRange = 1026;
    static constexpr RETCODE kTextNotConvertible = 1101;
    static constexpr RETCODE kUnknownCharset = 1102;

    CDBException(RETCODE retCode, const CString& error, const CString& stateNativeOrigin);
    ~CDBException() override;

    // The message, or the state text where the driver gave no message; without the last line break.
    CString GetErrorMessage() const override;
    const char* what() const noexcept override;
    // The first record's five-character SQLSTATE; empty without any record.
    CString GetState() const;

    RETCODE m_nRetCode;
    // The driver's texts, one line for each diagnostic record.
    CString m_strError;
    // "State:42S02,Native:1,Origin:[SQLite]", one line for each diagnostic record.
    CString m_strStateNativeOrigin;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CDBException;
#endif
