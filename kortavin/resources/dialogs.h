#pragma once

#include <span>

#include "kortavin/window/dialogtemplate.h"

namespace kortavin::resources {

// The numbers of this library's dialogs.
inline constexpr unsigned kTablesPage = 16001;
inline constexpr unsigned kRelationsPage = 16004;
inline constexpr unsigned kFieldsPage = 16006;
inline constexpr unsigned kConditionsPage = 16008;
inline constexpr unsigned kSortPage = 16009;
inline constexpr unsigned kStatementPage = 16011;
inline constexpr unsigned kMatchDialog = 16012;

// The ids of their controls.
inline constexpr int kAvailableList = 16002;
inline constexpr int kSelectedList = 16003;
inline constexpr int kAddButton = 16005;     // of the tables: choose
inline constexpr int kDeleteButton = 16007;  // of the tables: take back
inline constexpr int kGrid = 16010;
inline constexpr int kAddRowButton = 16013;
inline constexpr int kDeleteRowButton = 16014;
inline constexpr int kAddColumnButton = 16015;
inline constexpr int kDeleteColumnButton = 16016;
inline constexpr int kStatementEdit = 16017;
inline constexpr int kCheckButton = 16018;
inline constexpr int kLoadButton = 16019;
inline constexpr int kSaveButton = 16020;
inline constexpr int kMatchListGrid = 16021;
inline constexpr int kMatchSampleGrid = 16022;

std::span<const window::DialogTemplate> Dialogs();

}  // namespace kortavin::resources
