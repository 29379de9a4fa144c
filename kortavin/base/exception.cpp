#include "kortavin/base/exception.h"

namespace kortavin {

CException::~CException() = default;
const char* CException::what() const noexcept {
    return "framework error";
}

CMemoryException::~CMemoryException() = default;
// Short enough for the string's own space: nothing is allocated here.
CString CMemoryException::GetErrorMessage() const {
    return "Out of memory";
}
const char* CMemoryException::what() const noexcept {
    return "out of memory";
}

CNotSupportedException::~CNotSupportedException() = default;
const char* CNotSupportedException::what() const noexcept {
    return "not supported";
}

CResourceException::~CResourceException() = default;
const char* CResourceException::what() const noexcept {
    return "resource missing";
}

}  // namespace kortavin
