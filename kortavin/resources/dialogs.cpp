#include "kortavin/resources/dialogs.h"

#include "kortavin/resources/module.h"
#include "kortavin/window/messages.h"

// Positions and sizes are in dialog units of the dialog's font.
namespace kortavin::resources {
namespace {

using base::TextId;
using window::ControlTemplate;
using window::DialogTemplate;

constexpr char kGridClass[] = "VESKARDOGridCtrl";
constexpr DWORD kStop = WS_VISIBLE | WS_TABSTOP;
constexpr DWORD kGridStyle = kStop | WS_BORDER;
constexpr DWORD kLabelStyle = WS_VISIBLE | WS_GROUP | SS_LEFT;
constexpr DWORD kListStyle = kStop | WS_BORDER | WS_VSCROLL | WS_HSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;
constexpr DWORD kStatementStyle =
    kStop | WS_BORDER | WS_VSCROLL | ES_MULTILINE | ES_AUTOVSCROLL | ES_AUTOHSCROLL | ES_WANTRETURN;

constexpr ControlTemplate Grid(int id, TextId text, int x, int y, int width, int height) {
    return {kGridClass, id, TextNumber(text), x, y, width, height, kGridStyle};
}
constexpr ControlTemplate Button(int id, TextId text, int x, int y, int width, int height, DWORD kind = 0) {
    return {"Button", id, TextNumber(text), x, y, width, height, kStop | kind};
}
constexpr ControlTemplate Label(TextId text, int x, int y, int width, int height) {
    return {"Static", IDC_STATIC, TextNumber(text), x, y, width, height, kLabelStyle};
}
constexpr DialogTemplate Page(unsigned id, TextId caption, std::span<const ControlTemplate> controls) {
    return {id, TextNumber(caption), 291, 200, WS_CHILD, "Arial", 10, controls};
}

constexpr ControlTemplate kTables[] = {
    {"ListBox", kAvailableList, 0, 12, 25, 128, 146, kListStyle},
    {"ListBox", kSelectedList, 0, 147, 25, 133, 146, kListStyle},
    Button(kAddButton, TextId::ChooseTable, 50, 177, 30, 14),
    Button(kDeleteButton, TextId::TakeTableBack, 214, 177, 30, 14),
    Label(TextId::AvailableTables, 51, 13, 64, 8),
    Label(TextId::ChosenTables, 188, 13, 62, 8),
};

constexpr ControlTemplate kRelations[] = {
    Grid(kGrid, TextId::GridControl, 8, 7, 276, 167),
    Button(kAddButton, TextId::AddRelationOrField, 8, 180, 50, 14),
    Button(kDeleteButton, TextId::DeleteRelationOrField, 70, 180, 50, 14),
};

constexpr ControlTemplate kFields[] = {
    Grid(kGrid, TextId::GridControl, 8, 7, 256, 170),
    Button(kAddButton, TextId::AddRelationOrField, 8, 182, 50, 14),
    Button(kDeleteButton, TextId::DeleteRelationOrField, 70, 182, 50, 14),
};

constexpr ControlTemplate kConditions[] = {
    Grid(kGrid, TextId::GridControl, 14, 7, 257, 166),
    Button(kAddRowButton, TextId::AddConditionRow, 16, 178, 50, 14),
    Button(kDeleteRowButton, TextId::DeleteConditionRow, 72, 178, 50, 14),
    Button(kAddColumnButton, TextId::AddConditionColumn, 164, 178, 50, 14),
    Button(kDeleteColumnButton, TextId::DeleteConditionColumn, 220, 178, 50, 14),
};

constexpr ControlTemplate kSort[] = {
    Grid(kGrid, TextId::GridControl, 15, 7, 256, 168),
    Button(kAddButton, TextId::AddRelationOrField, 15, 180, 50, 14),
    Button(kDeleteButton, TextId::DeleteRelationOrField, 77, 180, 50, 14),
};

constexpr ControlTemplate kStatement[] = {
    {"Edit", kStatementEdit, 0, 12, 20, 227, 50, kStatementStyle},
    Button(kCheckButton, TextId::CheckStatement, 250, 20, 34, 11),
    Grid(kGrid, TextId::GridControl, 12, 75, 270, 118),
    Label(TextId::PageStatement, 14, 9, 46, 9),
    Button(kLoadButton, TextId::LoadStatement, 250, 43, 34, 11),
    Button(kSaveButton, TextId::SaveStatement, 250, 59, 34, 11),
};

constexpr ControlTemplate kMatch[] = {
    Button(IDOK, TextId::Ok, 22, 135, 50, 14, BS_DEFPUSHBUTTON),
    Button(IDCANCEL, TextId::Cancel, 97, 135, 50, 14),
    Grid(kMatchListGrid, TextId::MatchListGrid, 10, 21, 148, 107),
    Grid(kMatchSampleGrid, TextId::MatchSampleGrid, 176, 11, 117, 140),
    {"Static", IDC_STATIC, TextNumber(TextId::MatchHint), 10, 12, 150, 8, WS_VISIBLE | SS_LEFT},
    {"Button", IDC_STATIC, 0, 6, 3, 294, 153, WS_VISIBLE | BS_GROUPBOX},
};

constexpr DialogTemplate kDialogs[] = {
    Page(kTablesPage, TextId::PageTables, kTables),
    Page(kRelationsPage, TextId::PageRelations, kRelations),
    Page(kFieldsPage, TextId::PageFields, kFields),
    Page(kConditionsPage, TextId::PageConditions, kConditions),
    Page(kSortPage, TextId::PageSort, kSort),
    Page(kStatementPage, TextId::PageStatement, kStatement),
    {kMatchDialog, TextNumber(TextId::Match), 310, 162, WS_POPUP | WS_CAPTION | WS_SYSMENU, "Arial", 10,
     kMatch},
};

}  // namespace

std::span<const DialogTemplate> Dialogs() {
    return kDialogs;
}

}  // namespace kortavin::resources
