#pragma once

#include "kortavin/base/arrays.h"
#include "kortavin/window/combobox.h"

namespace kortavin {

// A list of symbol characters, which are its items' texts. The host attaches it to an owner-drawn, unsorted
// drop-down list of fixed item height, sets the symbol and reads it back when its dialog is accepted; the
// parent is told nothing. The list fills itself when a symbol is set or an item is drawn.
//
// A symbol is one double-byte character, told as its two GBK bytes. In item order: black circle A1F1, white
// star A1EE, black star A1EF, white circle A1F0, bullseye A1F2, white diamond A1F3, black diamond A1F4, white
// square A1F5, black square A1F6, white triangle A1F7, black triangle A1F8, circled dot A1D1, full-width plus
// A3AB, multiplication sign A1C1. All stand in GBK's rows of symbols and full-width forms.
class KORTAVIN_API CSelTextSymbol : public CComboBox {
  public:
    // The black circle is chosen; the combo box has neither items nor a selection yet.
    CSelTextSymbol();
    ~CSelTextSymbol() override;
    const window::MessageMap* GetMessageMap() const override;

    // Writes the item's symbol ten pixels from the left edge of the request's rectangle, at its top, in the
    // font and colours that the context holds, without clearing the rest. The selection field and a
    // highlighted item look the same as any other; a number without a symbol (-1: nothing is selected) draws
    // nothing.
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) override;

    // Selects the item that equals the text byte for byte; any other text changes nothing. Without a window
    // the symbol is only stored.
    void SetSymbol(const CString& symbol);
    CString GetSymbol() const { return m_Symbol; }

  protected:
    // Takes over what the user selected; nothing changes when nothing is.
    void OnSelchange();

    CStringArray m_Symbols;
    int m_Count = 0;
    CString m_Symbol;
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CSelTextSymbol;
#endif
