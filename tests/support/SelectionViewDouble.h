// The view around the list's selection: a view of some rows, file ids of a test's choice, and what it was
// told.
#pragma once

#include "browser/GridSelection.h"

#include <functional>
#include <string>
#include <vector>

namespace quavernet::test {

class SelectionViewDouble : public SelectionView {
public:
    std::int64_t RowData(std::int32_t row) const override { return fileId(row); }
    std::int32_t TopRow() const override { return topRow; }
    void SetTopRow(std::int32_t row) override { topRow = row; }
    bool RowIsVisible(std::int32_t row) const override { return row >= topRow && row < topRow + visibleRows; }
    void SetScanningPanel(const std::string& text) override { panel = text; }
    void RepaintRows() override { ++repaints; }
    void SelectionChanged() override {
        if (onSelectionChanged) {
            onSelectionChanged();
        }
    }
    void SetKontextItems(int mode) override { kontextItems.push_back(mode); }

    std::function<std::int64_t(std::int32_t)> fileId = [](std::int32_t row) { return 1000 + row; };
    std::int32_t topRow = 1;
    std::int32_t visibleRows = 10;
    std::string panel;
    int repaints = 0;
    std::vector<int> kontextItems;
    std::function<void()> onSelectionChanged;
};

} // namespace quavernet::test
