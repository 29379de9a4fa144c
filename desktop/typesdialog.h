#pragma once

#include <QtWidgets/QDialog>
#include <vector>

#include "kortavin/odbc/fieldinfo.h"

namespace kortavin::desktop {

// Lists the columns of a result with their types.
class TypesDialog : public QDialog {
  public:
    TypesDialog(QWidget* parent, const std::vector<CODBCFieldInfo>& columns);
};

}  // namespace kortavin::desktop
