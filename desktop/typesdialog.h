#pragma once

#include <QtWidgets/QDialog>
#include <vector>

#include "framework/odbc/fieldinfo.h"

namespace kortavin::demo {

// Lists the columns of a result with their types.
class TypesDialog : public QDialog {
  public:
    TypesDialog(QWidget* parent, const std::vector<CODBCFieldInfo>& columns);
};

}  // namespace kortavin::demo
