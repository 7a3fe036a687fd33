#include "window/TreeJobs.h"

#include "Floors.h"
#include "Lines.h"
#include "window/BareTree.h"

#include "app/MainModule.h"
#include "tree/TreeView.h"

#include <stdexcept>

namespace quavernet::bench {

namespace {

constexpr int Categories = 100;
constexpr Wanted LoadLimits{.ratio = 2, .limit = 0.4};

std::string CategoryName(int number) {
    return "Category " + std::to_string(1000 + number);
}

void Insert(const std::string& head, std::string& values) {
    if (!values.empty()) {
        mainModule.Connection->Execute(head + " values " + values);
        values.clear();
    }
}

/// Deals the files out to the categories in turn, so that the order of the rows is no order of the tree.
void FillTree(std::size_t files) {
    constexpr std::size_t RowsAtOnce = 400;
    std::string values;
    for (int number = 1; number <= Categories; ++number) {
        values += (values.empty() ? "('" : ", ('") + CategoryName(number) + "')";
    }
    Insert("Insert into Categories (Category)", values);
    const std::string head = "Insert into FileCategories (File_id, Category_id, Position, Parent, Filename)";
    for (std::size_t number = 0; number < files; ++number) {
        const auto category = static_cast<int>(number % Categories) + 1;
        values += (values.empty() ? "(" : ", (") + std::to_string(number + 1) + ", " +
                  std::to_string(category) + ", " + std::to_string(number / Categories + 1) + ", '" +
                  CategoryName(category) + "', '" + std::to_string(number + 1) + ".mp3')";
        if (number % RowsAtOnce == 0) {
            Insert(head, values);
        }
    }
    Insert(head, values);
    mainModule.Connection->Commit();
}

std::string LibraryPath() {
    return mainModule.ConnectionString.substr(mainModule.ConnectionString.find("Data Source=") + 12);
}

class Trees {
public:
    Trees(RealWindow& window, int rounds)
        : m_window(window), m_rounds(rounds), m_library(LibraryPath()), m_entries(Entries()),
          m_bare(Categories, static_cast<int>(m_entries) / Categories) {
        m_bare.resize(Tree().size());
        m_bare.show();
    }

    void LoadJob(bool open) {
        const Timed painted{
            nullptr, [&] { m_window.UntilPainted([&] { m_window.Form().Tree().LoadTree(); }, Tree()); }};
        const Timed floor{nullptr, [&] {
                              ReadRows();
                              m_window.UntilPainted([&] { m_bare.Fill(open); }, m_bare);
                          }};
        for (int number = 1; open && number <= Categories; ++number) {
            mainModule.TreeNodeData.Add("CAT_" + CategoryName(number));
        }
        Print(Measure(std::string("tree to the painted nodes, ") + std::to_string(m_entries) + " entries, " +
                          (open ? "all open" : "all closed"),
                      m_entries, LoadLimits, m_rounds, painted, floor));
        RequireLoaded(open);
    }

private:
    TreeView& Tree() { return m_window.Form().Panes().Tree(); }
    std::size_t Entries() { return m_library.ReadAll("select FileCategory_id from FileCategories"); }

    // The statements of a load, in one transaction.
    void ReadRows() {
        m_library.Execute("begin");
        m_library.ReadAll("select Category from Categories");
        m_library.ReadAll("select F.Name, C.Category, F.Path, F.File_id, FC.Position, FC.FileCategory_id "
                          "from Files F, Categories C, FileCategories FC where F.File_id = FC.File_id "
                          "and C.Category_id = FC.Category_id order by FC.Position");
        m_library.ReadAll("select sum(F.Length), FC.Category_id from Files F inner join FileCategories FC "
                          "on F.File_id = FC.File_id group by FC.Category_id");
        m_library.Execute("commit");
    }
    void RequireLoaded(bool open) {
        const auto shown = m_window.Form().Tree().Model().Nodes().size();
        const QModelIndex last = Tree().model()->index(Categories - 1, 0, Tree().model()->index(0, 0));
        if (shown != 1 + Categories + m_entries || Tree().isExpanded(last) != open) {
            throw std::runtime_error("the tree shows " + std::to_string(shown) + " nodes");
        }
    }

    RealWindow& m_window;
    int m_rounds;
    BareLibrary m_library;
    std::size_t m_entries;
    BareTree m_bare;
};

} // namespace

void TreeJobs(RealWindow& window, int rounds) {
    FillTree(window.Grid().Model().Rows().Count());
    Trees trees(window, rounds);
    trees.LoadJob(false);
    trees.LoadJob(true);
}

} // namespace quavernet::bench
