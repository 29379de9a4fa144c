#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "kortavin/grid/gridctrl.h"
#include "kortavin/window/metrics.h"
#include "tests/support/memory/input.h"

// A grid in a window of the memory desktop, and an owner that records what it is told.
class GridWindow : public ::testing::Test {
  protected:
    class Host : public CWnd {
      public:
        std::vector<std::string> told;
        std::function<void(const GridNotify&)> onNotify;

        BOOL OnNotify(WPARAM, LPARAM lParam, LRESULT*) override {
            const auto& notify = *reinterpret_cast<const GridNotify*>(lParam);
            told.push_back(std::to_string(notify.hdr.code) + " " + std::to_string(notify.row) + "," +
                           std::to_string(notify.col));
            if (onNotify)
                onNotify(notify);
            return TRUE;
        }
        BOOL OnCommand(WPARAM wParam, LPARAM) override {
            told.push_back("command " + std::to_string(LOWORD(wParam)));
            return TRUE;
        }
    };

    // The client area is 200 by 100, columns are 50 and rows 20 pixels wide and high.
    template <class Grid = CGridCtrl>
    void Open(int rows, int cols, int fixedRows = 1, int fixedCols = 1, CSize client = {200, 100}) {
        kortavin::window::RegisterWindowClass("GridHost");
        host.Create("GridHost", "", WS_POPUP | WS_VISIBLE, {0, 0, 400, 400}, nullptr, 0);
        grid = std::make_unique<Grid>(rows, cols, fixedRows, fixedCols);
        grid->Create(CRect({10, 10}, client), &host, 7, WS_CHILD | WS_VISIBLE | WS_TABSTOP);
        for (int row = 0; row < rows; ++row)
            grid->SetRowHeight(row, 20);
        for (int col = 0; col < cols; ++col)
            grid->SetColumnWidth(col, 50);
        kortavin::testing::Loop();
        host.told.clear();
    }
    // The middle of a cell that shows.
    CPoint MiddleOf(int row, int col) const {
        CRect rect;
        EXPECT_TRUE(grid->GetCellRect(row, col, &rect));
        return {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2};
    }
    void Click(int row, int col, UINT keys = 0) { kortavin::testing::Click(*grid, MiddleOf(row, col), keys); }

    kortavin::testing::MemoryDesktop desktop;
    Host host;
    std::unique_ptr<CGridCtrl> grid;
};
