#include "browser/GridSelection.h"

#include "browser/LiteralGrid.h"
#include "support/LogicTest.h"
#include "support/SelectionViewDouble.h"

#include <random>
#include <sstream>

namespace quavernet::test {

namespace {

/// Runs one random sequence on both grids; the text of the steps so far explains a difference.
class Pair {
public:
    explicit Pair(unsigned seed) : m_random(seed) {
        m_view.fileId = [this](std::int32_t row) { return m_ids.at(row); };
        m_view.onSelectionChanged = [this] { m_controlStateRow = m_fast.Row(); };
        Load();
        Step("view", [&] { View(); });
    }

    void Run(int steps) {
        for (int i = 0; i < steps && !::testing::Test::HasFailure(); ++i) {
            RandomStep();
        }
    }

private:
    int Pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

    template <typename Action> void Step(const std::string& name, Action&& action) {
        m_log << name << "\n";
        action();
        Compare();
    }

    void Load() {
        const int count = Pick(0, 3) == 0 ? Pick(0, 3) : Pick(0, 40);
        m_log << "load " << count << "\n";
        m_ids.clear();
        std::map<int, std::string> paths;
        mainModule.FilePaths.Clear();
        for (int row = 1; row <= count; ++row) {
            m_ids[row] = Pick(0, 1) == 0 ? Pick(1, 45) : 1'000'000'000'000 + row;
            paths[row] = "/music/" + std::to_string(m_load) + "/" + std::to_string(row);
            mainModule.FilePaths.Add(paths[row]);
        }
        ++m_load;
        m_fast.Reset(count + 1);
        m_slow.Load(count, paths, m_ids);
        Compare();
    }

    void View() {
        const int top = Pick(1, std::max(1, m_slow.grid.Rows - 1));
        const int visible = Pick(0, 5) == 0 ? Pick(0, 1) : Pick(2, 15);
        m_view.topRow = top;
        m_view.visibleRows = visible;
        m_slow.grid.TopRow = top;
        m_slow.grid.VisibleRows = visible;
    }

    void Press(int button, int shift) {
        const int row = Pick(0, 9) == 0 ? 0 : Pick(0, m_slow.grid.Rows - 1);
        std::ostringstream name;
        name << "press " << button << " shift " << shift << " row " << row;
        Step(name.str(), [&] {
            static constexpr GridButton Buttons[] = {GridButton::Other, GridButton::Left, GridButton::Right,
                                                     GridButton::Other, GridButton::Other};
            m_view.kontextItems.clear();
            m_fast.MouseDown(row, Buttons[button], {(shift & 1) != 0, (shift & 2) != 0, (shift & 4) != 0});
            m_slow.Press(button, shift, row);
            EXPECT_EQ(m_view.kontextItems,
                      m_slow.kontextItems == 0 ? std::vector<int>{} : std::vector<int>{m_slow.kontextItems});
            EXPECT_EQ(m_controlStateRow, m_slow.controlStateRow);
        });
        if (Pick(0, 7) != 0) {
            Step("release", [&] {
                m_fast.MouseUp();
                m_slow.Release();
            });
        }
    }

    void Key() {
        const bool shift = Pick(0, 1) == 1;
        const int page = std::max(1, m_slow.grid.VisibleRows);
        const int from = m_slow.grid.RowSel;
        const std::vector<std::pair<GridKey, int>> keys = {{GridKey::Up, from - 1},
                                                           {GridKey::Down, from + 1},
                                                           {GridKey::PageUp, from - page},
                                                           {GridKey::PageDown, from + page},
                                                           {GridKey::Home, 1},
                                                           {GridKey::End, m_slow.grid.Rows - 1}};
        const auto [key, target] = keys[static_cast<std::size_t>(Pick(0, 5))];
        Step("key " + std::to_string(static_cast<int>(key)) + (shift ? " with shift" : ""),
             [&, key = key, target = target] {
                 m_fast.KeyMove(key, shift, m_view.visibleRows);
                 m_slow.Key(target, shift);
             });
    }

    void RandomStep() {
        switch (Pick(0, 15)) {
        case 0:
            Load();
            break;
        case 1:
            Step("view", [&] { View(); });
            break;
        case 2:
            Step("focus", [&] {
                m_fast.GotFocus();
                m_slow.LastColSel = m_slow.LastRowSel = 0;
            });
            break;
        case 3:
            Press(2, 0);
            break;
        case 4:
            Press(4, 0);
            break;
        case 5:
            Step("changed by a command", [&] {
                const int row = Pick(0, m_slow.grid.Rows - 1);
                m_fast.SetRow(row);
                m_fast.SelChange();
                m_slow.grid.SetRow(row);
                m_slow.grid.ColSel = 5;
                m_slow.SelChange();
            });
            break;
        case 6:
        case 7:
        case 8:
        case 9:
            Key();
            break;
        default:
            Press(1, std::vector<int>{0, 0, 1, 1, 2, 2, 2, 3, 4, 6}[static_cast<std::size_t>(Pick(0, 9))]);
        }
    }

    void Compare() {
        std::vector<std::vector<bool>> painted;
        for (int row = 0; row < m_slow.grid.Rows; ++row) {
            painted.emplace_back(LiteralControl::Cols, m_fast.IsPainted(row));
        }
        EXPECT_EQ(painted, m_slow.grid.selectedColor) << m_log.str();
        EXPECT_EQ(mainModule.SelectedRows.Rows(), m_slow.SelectedRows.Rows()) << m_log.str();
        EXPECT_EQ(m_view.panel, m_slow.panelScanning) << m_log.str();
        EXPECT_EQ(m_fast.Rows(), m_slow.grid.Rows) << m_log.str();
        EXPECT_EQ(std::tuple(m_fast.Row(), m_fast.RowSel(), m_fast.Col(), m_fast.ColSel()),
                  std::tuple(m_slow.grid.Row, m_slow.grid.RowSel, m_slow.grid.Col, m_slow.grid.ColSel))
            << m_log.str();
        EXPECT_EQ(std::tuple(m_fast.LastRow(), m_fast.LastRowSel(), m_fast.LastCol(), m_fast.LastColSel()),
                  std::tuple(m_slow.LastRow, m_slow.LastRowSel, m_slow.LastCol, m_slow.LastColSel))
            << m_log.str();
        EXPECT_EQ(m_view.topRow, m_slow.grid.TopRow) << m_log.str();
        EXPECT_EQ(m_fast.HighLight(), m_slow.grid.HighLight == 1) << m_log.str();
        EXPECT_EQ(std::tuple(m_fast.CtrlDown(), m_fast.ShiftDown(), m_fast.LeftDown()),
                  std::tuple(m_slow.CtrlDown, m_slow.ShiftDown, m_slow.LeftDown))
            << m_log.str();
        EXPECT_EQ(std::tuple(m_fast.RightClicked(), m_fast.RowDeselected(), m_drag.GridDragging),
                  std::tuple(m_slow.RightClicked, m_slow.RowDeselected, m_slow.GridDragging))
            << m_log.str();
        EXPECT_EQ(m_fast.MultipleSelection(), m_slow.multiple) << m_log.str();
        EXPECT_EQ(mainModule.GridTopRow, m_slow.GridTopRow) << m_log.str();
        EXPECT_EQ(mainModule.DetailsRow, m_slow.DetailsRow) << m_log.str();
    }

    std::mt19937 m_random;
    int m_load = 0;
    std::map<int, std::int64_t> m_ids;
    SelectionViewDouble m_view;
    DragState m_drag;
    GridSelection m_fast{m_view, m_drag};
    LiteralGrid m_slow;
    int m_controlStateRow = -1;
    std::ostringstream m_log;
};

using GridSelectionPropertyTest = LogicTest;

TEST_F(GridSelectionPropertyTest, RandomUseGivesWhatTheRulesGiveStepByStep) {
    for (unsigned seed = 1; seed <= 3000 && !HasFailure(); ++seed) {
        mainModule = MainModule();
        SCOPED_TRACE("seed " + std::to_string(seed));
        Pair(seed).Run(40);
    }
}

TEST_F(GridSelectionPropertyTest, RangesOfRowsHoldWhatASetOfRowsHolds) {
    std::mt19937 random(7);
    const auto pick = [&](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(random);
    };
    for (int round = 0; round < 200; ++round) {
        RowRanges ranges;
        std::vector<bool> rows(62, false);
        for (int step = 0; step < 60; ++step) {
            const int first = pick(1, 60);
            const int last = std::min(60, first + pick(-1, 12));
            const bool add = pick(0, 1) == 1;
            add ? ranges.Add(first, last) : ranges.Remove(first, last);
            for (int row = first; row <= last; ++row) {
                rows[static_cast<std::size_t>(row)] = add;
            }
            int previousEnd = -1;
            for (const auto& [begin, end] : ranges.Ranges()) {
                EXPECT_LE(begin, end);
                EXPECT_GT(begin, previousEnd + 1) << "two ranges touch";
                previousEnd = end;
            }
            for (int row = 0; row <= 61; ++row) {
                ASSERT_EQ(ranges.Contains(row), rows[static_cast<std::size_t>(row)]) << row;
            }
        }
    }
}

} // namespace

} // namespace quavernet::test
