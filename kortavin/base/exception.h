#pragma once

#include <exception>
#include <new>

#include "kortavin/base/cstring.h"
#include "kortavin/base/object.h"

namespace kortavin {

// Root of the framework's errors. They are thrown by value and caught by reference.
class KORTAVIN_API CException : public std::exception {
  public:
    ~CException() override;
    // The text to show, in GBK.
    virtual CString GetErrorMessage() const = 0;
    // A fixed ASCII text naming the kind of error.
    const char* what() const noexcept override;
};

// An allocation failed.
class KORTAVIN_API CMemoryException : public CException {
  public:
    ~CMemoryException() override;
    CString GetErrorMessage() const override;
    const char* what() const noexcept override;
};

// Runs `body`; that an allocation failed in it is told as the framework's own error.
template <class Body>
decltype(auto) WithMemoryErrors(Body body) {
    try {
        return body();
    } catch (const std::bad_alloc&) {
        throw CMemoryException();
    }
}

// An operation that the other side does not offer; it carries only a text. Not a database error.
class KORTAVIN_API CNotSupportedException : public CException {
  public:
    explicit CNotSupportedException(const CString& text) : m_text(text) {}
    ~CNotSupportedException() override;
    CString GetErrorMessage() const override { return m_text; }
    const char* what() const noexcept override;

  private:
    CString m_text;
};

// Something that a window needs cannot be had: a toolkit, a dialog template, a control. It carries only a
// text.
class KORTAVIN_API CResourceException : public CException {
  public:
    explicit CResourceException(const CString& text) : m_text(text) {}
    ~CResourceException() override;
    CString GetErrorMessage() const override { return m_text; }
    const char* what() const noexcept override;

  private:
    CString m_text;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CException;
using kortavin::CMemoryException;
using kortavin::CNotSupportedException;
using kortavin::CResourceException;
#endif
