#include "kortavin/symbology/seltextsymbol.h"

#include "kortavin/symbology/picker.h"

namespace kortavin {

using namespace symbology;
using namespace window;
using base::TextId;

namespace {

constexpr PickerItem kSymbols[] = {
    {.name = TextId::TextBlackCircle, .text = "\xA1\xF1"},    // ●
    {.name = TextId::TextWhiteStar, .text = "\xA1\xEE"},      // ☆
    {.name = TextId::TextBlackStar, .text = "\xA1\xEF"},      // ★
    {.name = TextId::TextWhiteCircle, .text = "\xA1\xF0"},    // ○
    {.name = TextId::TextBullseye, .text = "\xA1\xF2"},       // ◎
    {.name = TextId::TextWhiteDiamond, .text = "\xA1\xF3"},   // ◇
    {.name = TextId::TextBlackDiamond, .text = "\xA1\xF4"},   // ◆
    {.name = TextId::TextWhiteSquare, .text = "\xA1\xF5"},    // □
    {.name = TextId::TextBlackSquare, .text = "\xA1\xF6"},    // ■
    {.name = TextId::TextWhiteTriangle, .text = "\xA1\xF7"},  // △
    {.name = TextId::TextBlackTriangle, .text = "\xA1\xF8"},  // ▲
    {.name = TextId::TextCircledDot, .text = "\xA1\xD1"},     // ⊙
    {.name = TextId::TextPlus, .text = "\xA3\xAB"},           // ＋
    {.name = TextId::TextCross, .text = "\xA1\xC1"},          // ×
};
constexpr int kIndent = 10;  // pixels

}  // namespace

CSelTextSymbol::CSelTextSymbol() {
    for (const PickerItem& item : kSymbols)
        m_Symbols.Add(item.text);
    m_Count = m_Symbols.GetSize();
    m_Symbol = m_Symbols[0];
}

CSelTextSymbol::~CSelTextSymbol() = default;

const MessageMap* CSelTextSymbol::GetMessageMap() const {
    static constexpr MessageEntry kEntries[] = {OnReflected<CBN_SELCHANGE, &CSelTextSymbol::OnSelchange>()};
    static const MessageMap map{CComboBox::GetMessageMap(), kEntries};
    return &map;
}

void CSelTextSymbol::DrawItem(LPDRAWITEMSTRUCT lpDrawItemStruct) {
    EnsureItems(*this, kSymbols);
    const int number = static_cast<int>(lpDrawItemStruct->itemID);
    if (number < 0 || number >= m_Count)
        return;
    const CRect& rect = lpDrawItemStruct->rcItem;
    lpDrawItemStruct->hDC->TextOut(rect.left + kIndent, rect.top, m_Symbols[number].Left(2).View());
}

void CSelTextSymbol::SetSymbol(const CString& symbol) {
    EnsureItems(*this, kSymbols);
    for (int i = 0; i < m_Count; ++i) {
        if (m_Symbols[i] == symbol) {
            SetCurSel(i);
            m_Symbol = symbol;
            return;
        }
    }
}

void CSelTextSymbol::OnSelchange() {
    if (const int selected = GetCurSel(); selected != CB_ERR)
        m_Symbol = m_Symbols[selected];
}

}  // namespace kortavin
