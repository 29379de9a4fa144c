#include "kortavin/odbc/dbexception.h"

namespace kortavin {

CDBException::CDBException(RETCODE retCode, const CString& error, const CString& stateNativeOrigin)
    : m_nRetCode(retCode), m_strError(error), m_strStateNativeOrigin(stateNativeOrigin) {}

CDBException::~CDBException() = default;

CString CDBException::GetErrorMessage() const {
    CString message = m_strError.IsEmpty() ? m_strStateNativeOrigin : m_strError;
    return message.TrimRight();
}

const char* CDBException::what() const noexcept {
    return "database error";
}

CString CDBException::GetState() const {
    static constexpr std::string_view kLabel = "State:";
    const std::string_view state = m_strStateNativeOrigin.View();
    return state.starts_with(kLabel) ? CString(state.substr(kLabel.size(), 5)) : CString();
}

}  // namespace kortavin
