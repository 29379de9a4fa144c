#pragma once

#include <QtWidgets/QWidget>
#include <vector>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/odbc/fieldinfo.h"

namespace kortavin {
class _CRecordsetEx;
}

namespace kortavin::desktop {

class Progress;

// A grid whose headings have two lines: a column's name, and its type's.
class ResultGrid : public CGridCtrl {
  public:
    CSize MeasureCell(int row, int col, CDC* dc) override;
};

// The rows of a statement's result, as far as they are shown.
class ResultTable : public QWidget {
  public:
    static constexpr int kMostRows = 100'000;

    struct Outcome {
        int rows = 0;             // that are shown
        bool hasMore = false;     // behind kMostRows
        bool wasStopped = false;  // by the user
    };

    explicit ResultTable(QWidget* parent);

    void Clear();
    // Takes the place of what is shown. On an error, which is thrown, the rows before it are shown; for lack
    // of memory none are.
    Outcome Fill(_CRecordsetEx& recordset, Progress& progress);

    const std::vector<CODBCFieldInfo>& Columns() const { return m_columns; }
    const CGridCtrl& Grid() const { return m_grid; }

  private:
    void MakeHeadings();
    void ReadRows(_CRecordsetEx& recordset, Progress& progress, Outcome& outcome);
    void ReadRow(_CRecordsetEx& recordset, int row);
    void FinishAt(int rows);

    ResultGrid m_grid;
    std::vector<CODBCFieldInfo> m_columns;
};

}  // namespace kortavin::desktop
