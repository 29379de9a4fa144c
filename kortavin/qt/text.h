#pragma once

#include <QString>
#include <string_view>

#include "kortavin/base/cstring.h"

// The border between the library's GBK bytes and Qt's text. What was decoded to be shown is never encoded
// again: whoever has to give a text back keeps its bytes (KeptText).
namespace kortavin::qt {

// To be shown: what is not valid GBK shows as \xNN.
QString ToQt(std::string_view gbk);

// Of text that the user entered or Qt made; half a surrogate pair becomes U+FFFD.
CString FromQt(const QString& text);

// Offsets of the same place: in GBK bytes and in what ToQt makes of them, back to the beginning of their
// character. Offsets outside count as the nearer end. A CR LF may count as the one break that it shows as.
enum class LineBreaks { AsCharacters, AsOne };
int QtOffset(std::string_view gbk, int byteOffset, LineBreaks breaks = LineBreaks::AsCharacters);
int ByteOffset(std::string_view gbk, int qtOffset, LineBreaks breaks = LineBreaks::AsCharacters);

// A text that a widget shows. Its bytes are those that were set for as long as the widget still shows the
// same.
class KeptText {
  public:
    const QString& Set(std::string_view gbk);                // answers what the widget is to show
    void ShowsAs(const QString& shown) { m_shown = shown; }  // what the widget made of that
    CString Get(const QString& shown) const;

  private:
    CString m_bytes;
    QString m_shown;
};

}  // namespace kortavin::qt
